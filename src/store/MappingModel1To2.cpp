#include "src/store/MappingModel1To2.h"

#include "src/store/Connection.h"
#include "src/store/Seal.h"
#include "src/store/StoreErrorOf.h"
#include "src/store/StoreFile.h"
#include "src/store/Trees.h"

#include <SQLiteCpp/Column.h>
#include <sqlite3.h>

#include <memory>
#include <set>
#include <vector>

namespace norvane {

namespace {

constexpr int kSource = 1;
constexpr int kDestination = 2;

/// Bookkeeping of the kit's own, which is the same in both; a store made by hand may lack it.
constexpr const char* kOwnTables[][2] = {
    {"nv_file", "path, session, sha256"},
    {"nv_uploadAttempt", "transactionId, startedAt, outcome, envelopeId"}};

/// Recipients name the envelope that they stand in, so that they are found there at once.
constexpr const char* kNameEnvelopes = "UPDATE main.NVMCDRecipient SET envelopeDefinition = (SELECT "
                                       "_envelopeDefinition FROM main.NVMCDRecipients "
                                       "WHERE _id = coalesce(agent, carbonCopy, certifiedDelivery, editor, "
                                       "inPersonSigner, intermediary, signer)) "
                                       "WHERE envelopeDefinition IS NULL";

/// The columns of an earlier table; none when there is no such table.
std::set<std::string> columnsOf(Connection& connection, const std::string& table) {
    std::set<std::string> columns;
    const Connection::Prepared statement(
        connection.prepare("SELECT name FROM pragma_table_info(?, 'source')"));
    statement->bind(1, table);
    while (statement->executeStep())
        columns.insert(statement->getColumn(0).getString());
    return columns;
}

/// What the earlier entity has, as far as it is there: a store made by hand may lack what it leaves empty.
std::set<std::string> sourceColumns(Connection& connection, const std::string& table) {
    const Schema::Table* model = Schema::ofVersion(kSource).find(table);
    std::set<std::string> columns = columnsOf(connection, table);
    std::erase_if(columns, [&](const std::string& column) { return !model || !model->hasColumn(column); });
    return columns;
}

std::string copyStatement(const EntityMapping& mapping, const EntityMigrationPolicy& policy) {
    std::vector<std::string> columns{"_id"}, values{"_id"};
    for (const auto& attribute : mapping.destination->attributes) {
        const auto value = policy.valueOf(attribute.name, mapping);
        if (!value) continue;
        columns.push_back(sqlName(attribute.name));
        values.push_back(*value);
    }
    const auto copy = [&](const std::string& column) {
        if (!mapping.sourceColumns.contains(column)) return;
        columns.push_back(sqlName(column));
        values.push_back(sqlName(column));
    };
    for (const auto& reference : mapping.destination->references)
        copy(reference.column);
    copy("_position");
    return "INSERT INTO main." + sqlName(mapping.destination->name) + " (" + joined(columns) + ") SELECT " +
           joined(values) + " FROM source." + sqlName(mapping.destination->name) + " ORDER BY _id";
}

/// A row whose owner is not there cannot be reached; the file kept aside has it still.
void leaveOutOrphans(Connection& connection) {
    for (;;) {
        std::vector<std::string> removals;
        {
            const Connection::Prepared check(connection.prepare("PRAGMA main.foreign_key_check"));
            while (check->executeStep())
                removals.push_back("DELETE FROM main." + sqlName(check->getColumn(0).getString()) +
                                   " WHERE _id = " + std::to_string(check->getColumn(1).getInt64()));
        }
        if (removals.empty()) return;
        for (const auto& removal : removals)
            connection.run(removal.c_str());
    }
}

void copyEverything(Connection& connection, const std::function<void(double)>& progress) {
    const NVMCDTabAnchorHorizontalAlignmentMigrationPolicy tabs;
    const EntityMigrationPolicy standard;
    const auto& destinations = Schema::ofVersion(kDestination).tables;
    double done = 0;
    for (const auto& destination : destinations) {
        const EntityMapping mapping{sourceColumns(connection, destination.name), &destination, kDestination};
        const EntityMigrationPolicy& policy = destination.name == "NVMCDTab" ? tabs : standard;
        if (!mapping.sourceColumns.empty()) connection.run(copyStatement(mapping, policy).c_str());
        if (progress) progress(++done / static_cast<double>(destinations.size()));
    }
    for (const auto& [table, columns] : kOwnTables)
        if (!columnsOf(connection, table).empty())
            connection.run(("INSERT INTO main." + std::string(table) + " (" + columns + ") SELECT " +
                            columns + " FROM source." + table)
                               .c_str());
    leaveOutOrphans(connection);
    connection.run(kNameEnvelopes);
}

/// What has come over is what will be read from now on.
void sealEverything(Connection& connection) {
    static_assert(Model::kVersion == kDestination, "seals are made by the model that reads them");
    Reseal reseal(connection);
    for (const Entity* entity : Model::current().entities()) {
        if (!entity->isSealed()) continue;
        std::vector<std::int64_t> rows;
        {
            const Connection::Prepared statement(
                connection.prepare("SELECT _id FROM main." + sqlName(entity->name())));
            while (statement->executeStep())
                rows.push_back(statement->getColumn(0).getInt64());
        }
        for (const std::int64_t row : rows)
            if (const auto object = loadTreeUnchecked(connection, *entity, row))
                reseal.seal(*entity, object.get(), row);
    }
}

/// Brings the journal into the file and does away with it, so that the file alone is the store.
void foldJournal(const std::filesystem::path& store) {
    Connection connection(store, Connection::Use::Writing);
    const std::string mode = connection.database().execAndGet("PRAGMA journal_mode = DELETE").getString();
    // A journal that stays would be taken for the new store's.
    if (mode != "delete") throw SQLite::Exception("the earlier store is in use", SQLITE_BUSY);
}

void expectSound(Connection& connection) {
    const std::string verdict = connection.database().execAndGet("PRAGMA main.integrity_check").getString();
    if (verdict != "ok") throw SQLite::Exception("the migrated store: " + verdict);
}

Failure migrate(const std::filesystem::path& source, const std::filesystem::path& destination,
                const std::function<void(double)>& progress) {
    for (const auto& store : {source, destination})
        if (auto error = protectStoreFile(store)) return error;
    std::unique_ptr<Connection> connection;
    try {
        foldJournal(source);
        connection = std::make_unique<Connection>(destination, Connection::Use::Writing);
        // What is cut short is thrown away as a whole, so it needs no journal on disk.
        connection->run("PRAGMA journal_mode = MEMORY");
        {
            const Connection::Prepared attach(connection->prepare("ATTACH ? AS source"));
            attach->bind(1, source.string());
            attach->exec();
        }
        connection->run("BEGIN EXCLUSIVE");
        for (const auto& statement : Schema::ofVersion(kDestination).statements())
            connection->run(statement.c_str());
        connection->run("PRAGMA defer_foreign_keys = ON");
        copyEverything(*connection, progress);
        sealEverything(*connection);
        connection->run("COMMIT");
        connection->run("DETACH source");
        expectSound(*connection);
        connection->run("PRAGMA journal_mode = WAL");
        return std::nullopt;
    } catch (const SQLite::Exception& exception) {
        return storeErrorOf(exception, connection ? connection->handle() : nullptr);
    }
}

} // namespace

std::optional<std::string> EntityMigrationPolicy::valueOf(const std::string& attribute,
                                                          const EntityMapping& mapping) const {
    if (!mapping.sourceColumns.contains(attribute)) return std::nullopt;
    return sqlName(attribute);
}

std::optional<std::string>
NVMCDTabAnchorHorizontalAlignmentMigrationPolicy::valueOf(const std::string& attribute,
                                                          const EntityMapping& mapping) const {
    auto standard = EntityMigrationPolicy::valueOf(attribute, mapping);
    if (!standard || mapping.modelVersion != kDestination || attribute != "anchorHorizontalAlignment")
        return standard;
    return "CASE WHEN " + *standard + " IS NOT NULL THEN 'left' END";
}

MappingModel mappingModel1To2() { return {"NorvaneSDK1_to_NorvaneSDK2", kSource, kDestination, &migrate}; }

} // namespace norvane
