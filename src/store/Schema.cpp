#include "src/store/Schema.h"

#include <algorithm>
#include <map>

namespace norvane {

namespace {

constexpr const char* kOwnTables[] = {
    "CREATE TABLE nv_metadata (key TEXT PRIMARY KEY, value TEXT NOT NULL) WITHOUT ROWID",
    "CREATE TABLE nv_file (path TEXT PRIMARY KEY, session TEXT NOT NULL, sha256 TEXT) WITHOUT ROWID",
    ("CREATE TABLE nv_uploadAttempt (transactionId TEXT PRIMARY KEY, startedAt INTEGER NOT NULL, "
     "outcome TEXT NOT NULL, envelopeId TEXT) WITHOUT ROWID"),
};

std::string tableStatement(const Schema::Table& table) {
    // Only identifiers of top rows outlive their rows (a run of uploads keeps them), so only they are never
    // reused.
    const bool isRoot = table.references.empty();
    std::vector<std::string> columns{isRoot ? "_id INTEGER PRIMARY KEY AUTOINCREMENT"
                                            : "_id INTEGER PRIMARY KEY"};
    for (const auto& attribute : table.attributes)
        columns.push_back(sqlName(attribute.name) + " " + attribute.type);
    for (const auto& reference : table.references)
        columns.push_back(sqlName(reference.column) + " INTEGER REFERENCES " + sqlName(reference.owner) +
                          " ON DELETE CASCADE");
    if (!isRoot) columns.emplace_back("_position INTEGER NOT NULL DEFAULT 0");
    return "CREATE TABLE " + sqlName(table.name) + " (" + joined(columns) + ")";
}

/// Partial, because a row has one owner among many possible ones.
std::string ownerIndexStatement(const std::string& table, const std::string& column) {
    return "CREATE INDEX " + sqlName("_" + table + "_" + column) + " ON " + sqlName(table) + " (" +
           sqlName(column) + ") WHERE " + sqlName(column) + " IS NOT NULL";
}

/// A trigger after the event. The kit's own connections run none, so only what others change sets it off.
std::string triggerStatement(const Schema::Table& table, const char* event, const std::string& statements) {
    return "CREATE TRIGGER " + sqlName("_" + table.name + "_" + event) + " AFTER " + event + " ON " +
           sqlName(table.name) + statements;
}

/// Passes a change of the row on to the row that owns it, up to the one with the seal. No key is set: that
/// would rewrite every index.
std::string touchOwners(const Schema& schema, const Schema::Table& table,
                        const std::vector<std::string>& versions) {
    std::map<std::string, std::vector<std::string>> owners;
    for (const auto& reference : table.references)
        for (const auto& version : versions)
            owners[reference.owner].push_back(version + "." + sqlName(reference.column));
    std::string statements = " BEGIN ";
    for (const auto& [owner, columns] : owners) {
        const bool isSealed = schema.find(owner)->hasColumn(kSealColumn);
        statements += "UPDATE " + sqlName(owner) + " SET " +
                      (isSealed ? "_seal = NULL" : "_position = _position") + " WHERE _id IN (" +
                      joined(columns) + ")" + (isSealed ? " AND _seal IS NOT NULL; " : "; ");
    }
    return statements + "END";
}

/// What somebody else changed is no longer what the kit wrote: the seal above it goes, unless it was changed
/// along. Not what somebody adds: whole envelopes come without a seal, and a trigger would make their many
/// rows twenty times as slow.
void addUnsealing(const Schema& schema, const Schema::Table& table, std::vector<std::string>& statements) {
    if (table.hasColumn(kSealColumn)) {
        statements.push_back(triggerStatement(table, "UPDATE",
                                              " WHEN NEW._seal = OLD._seal BEGIN UPDATE " +
                                                  sqlName(table.name) +
                                                  " SET _seal = NULL WHERE _id = NEW._id; END"));
    }
    if (table.references.empty()) return;
    statements.push_back(triggerStatement(table, "UPDATE", touchOwners(schema, table, {"OLD", "NEW"})));
    statements.push_back(triggerStatement(table, "DELETE", touchOwners(schema, table, {"OLD"})));
}

} // namespace

std::string sqlName(std::string_view identifier) { return '"' + std::string(identifier) + '"'; }

std::string joined(const std::vector<std::string>& parts) {
    std::string text;
    for (const auto& part : parts)
        text += (text.empty() ? "" : ", ") + part;
    return text;
}

std::vector<std::string> Schema::Table::columns() const {
    std::vector<std::string> names{"_id"};
    for (const auto& attribute : attributes)
        names.push_back(attribute.name);
    for (const auto& reference : references)
        names.push_back(reference.column);
    if (!references.empty()) names.emplace_back("_position");
    return names;
}

bool Schema::Table::hasColumn(std::string_view column) const {
    const auto names = columns();
    return std::find(names.begin(), names.end(), column) != names.end();
}

const Schema& Schema::ofVersion(int version) {
    static const Schema& first = *new Schema(schemaOfVersion1());
    static const Schema& second = *new Schema(schemaOfVersion2());
    return version == 1 ? first : second;
}

const Schema::Table* Schema::find(std::string_view table) const {
    const auto found =
        std::find_if(tables.begin(), tables.end(), [&](const Table& t) { return t.name == table; });
    return found == tables.end() ? nullptr : &*found;
}

std::vector<std::string> Schema::statements() const {
    std::vector<std::string> statements;
    for (const Table& table : tables) {
        statements.push_back(tableStatement(table));
        for (const auto& reference : table.references)
            statements.push_back(ownerIndexStatement(table.name, reference.column));
    }
    statements.insert(statements.end(), std::begin(kOwnTables), std::end(kOwnTables));
    statements.insert(statements.end(), lookUps.begin(), lookUps.end());
    const bool isSealed = std::any_of(tables.begin(), tables.end(),
                                      [](const Table& table) { return table.hasColumn(kSealColumn); });
    for (const Table& table : tables)
        if (isSealed) addUnsealing(*this, table, statements);
    const std::string number = std::to_string(version);
    statements.push_back("INSERT INTO nv_metadata VALUES ('modelName', 'NorvaneSDK'), ('modelVersion', '" +
                         number + "')");
    statements.push_back("PRAGMA user_version = " + number);
    return statements;
}

} // namespace norvane
