#include "src/store/FileJournal.h"
#include "src/store/Schema.h"
#include "src/store/Seal.h"
#include "src/store/StoreErrorOf.h"
#include "src/store/StoreWork.h"
#include "src/store/Trees.h"

#include <norvane/platform/Platform.h>
#include <norvane/store/DocumentFiles.h>
#include <norvane/store/NVMCDDocuments.h>
#include <norvane/store/StoreInspection.h>

#include <SQLiteCpp/Column.h>
#include <sys/stat.h>

#include <functional>
#include <set>

namespace norvane {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostOfAKind = 1'000; ///< of findings in one table: a broken store has no end of them

/// Looks at one aspect after another and collects what it finds.
class StoreCheck {
  public:
    explicit StoreCheck(ObjectStore& store)
        : store_(store) {}

    Result<std::vector<StoreFinding>> run() {
        for (const auto step :
             {&StoreCheck::database, &StoreCheck::columns, &StoreCheck::model, &StoreCheck::references,
              &StoreCheck::owners, &StoreCheck::identifiers, &StoreCheck::contents, &StoreCheck::documents,
              &StoreCheck::files, &StoreCheck::modes}) {
            if (auto error = (this->*step)()) return *error;
            if (lacksColumns_) break; // the others would only fail on it
        }
        return std::move(findings_);
    }

  private:
    using Row = std::function<void(SQLite::Statement&)>;

    void found(const char* kind, std::string subject, std::string description) {
        findings_.push_back({kind, std::move(subject), std::move(description)});
    }
    Failure each(const std::string& sql, const Row& take) {
        return StoreWork::read(store_, [&](Connection& connection) {
            const Connection::Prepared statement(connection.prepare(sql));
            while (statement->executeStep())
                take(*statement);
        });
    }
    static std::string rowName(std::string_view table, std::int64_t row) {
        return std::string(table) + " " + std::to_string(row);
    }

    Failure database() {
        return each("PRAGMA integrity_check", [this](SQLite::Statement& row) {
            const std::string verdict = row.getColumn(0).getString();
            if (verdict != "ok") found("database", store_.file().filename().string(), verdict);
        });
    }

    Failure columns() {
        std::set<std::string> present;
        auto error = each("SELECT tables.name || '.' || columns.name FROM sqlite_master AS tables, "
                          "pragma_table_info(tables.name) AS columns WHERE tables.type = 'table'",
                          [&](SQLite::Statement& row) { present.insert(row.getColumn(0).getString()); });
        if (error) return error;
        const auto expect = [&](const std::string& table, const std::string& column) {
            if (present.contains(table + "." + column)) return;
            lacksColumns_ = true;
            found("model", table, "It has no column " + column + ".");
        };
        for (const Schema::Table& table : Schema::ofVersion(Model::kVersion).tables)
            for (const std::string& column : table.columns())
                expect(table.name, column);
        expect("nv_metadata", "value");
        return std::nullopt;
    }

    Failure model() {
        return each("SELECT value FROM nv_metadata WHERE key = 'modelVersion' AND value <> "
                    "(SELECT CAST(user_version AS TEXT) FROM pragma_user_version)",
                    [this](SQLite::Statement& row) {
                        found("model", "nv_metadata",
                              "The model version " + row.getColumn(0).getString() + " is not the file's.");
                    });
    }

    Failure references() {
        return each("PRAGMA foreign_key_check", [this](SQLite::Statement& row) {
            found("reference", rowName(row.getColumn(0).getString(), row.getColumn(1).getInt64()),
                  "It names a row of " + row.getColumn(2).getString() + " that is not there.");
        });
    }

    Failure owners() {
        for (const Entity* entity : Model::current().entities()) {
            if (entity->isRoot()) continue;
            std::string owners;
            for (const auto& inverse : entity->inverses)
                owners += (owners.empty() ? "(" : " + (") + sqlName(inverse.column) + " IS NOT NULL)";
            auto error = each("SELECT _id, " + owners + " AS owners FROM " + sqlName(entity->name()) +
                                  " WHERE owners <> 1 LIMIT " + std::to_string(kMostOfAKind),
                              [&](SQLite::Statement& row) {
                                  found("owner", rowName(entity->name(), row.getColumn(0).getInt64()),
                                        row.getColumn(1).getInt() == 0 ? "Nothing owns it."
                                                                       : "It has several owners.");
                              });
            if (error) return error;
        }
        return std::nullopt;
    }

    Failure identifiers() {
        return each("SELECT envelopeId, count(*) FROM NVMCDEnvelopeDefinition WHERE envelopeId IS NOT NULL "
                    "GROUP BY envelopeId HAVING count(*) > 1",
                    [this](SQLite::Statement& row) {
                        found("identifier", row.getColumn(0).getString(),
                              std::to_string(row.getColumn(1).getInt()) + " envelopes have this identifier.");
                    });
    }

    /// One object at a time, so that neither memory nor the journal grows with the store.
    Failure contents() {
        for (const Entity* entity : Model::current().entities()) {
            if (!entity->isSealed()) continue;
            std::vector<std::int64_t> rows;
            const auto take = [&](SQLite::Statement& row) { rows.push_back(row.getColumn(0).getInt64()); };
            if (auto error = each("SELECT _id FROM " + sqlName(entity->name()), take)) return error;
            for (const std::int64_t number : rows) {
                bool isDamaged = false;
                const auto look = [&](Connection& connection) {
                    try {
                        loadTree(connection, *entity, number);
                    } catch (const DamagedObject&) {
                        isDamaged = true;
                    }
                };
                if (auto error = StoreWork::read(store_, look)) return error;
                if (isDamaged)
                    found("content", rowName(entity->name(), number), "It is not what was written.");
            }
        }
        return std::nullopt;
    }

    struct StoredDocument {
        std::string name;
        std::string path;
        std::optional<std::string> digest;
    };

    Failure documents() {
        std::vector<StoredDocument> documents;
        const auto take = [&](SQLite::Statement& row) {
            auto& document = documents.emplace_back();
            document.name = row.getColumn(0).getString();
            document.path = row.getColumn(1).getString();
            if (!row.isColumnNull(2)) document.digest = row.getColumn(2).getString();
        };
        auto error =
            each("SELECT coalesce(name, documentId, 'NVMCDDocument ' || _id), sandboxFilePath, _sha256 FROM "
                 "NVMCDDocument WHERE sandboxFilePath <> ''",
                 take);
        if (error) return error;
        for (const auto& document : documents)
            if (auto damaged = NVM_verifyDocumentWithPath(document.path, document.digest, document.name))
                found("document", document.path, damaged->localizedDescription());
        return each(
            "SELECT trim(sandboxFilePath, '/') AS path FROM NVMCDDocument WHERE sandboxFilePath <> '' GROUP "
            "BY path HAVING count(*) > 1 AND count(envelopeDefinition) > 0",
            [this](SQLite::Statement& row) {
                found("document", "/" + row.getColumn(0).getString(),
                      "An envelope shares this file with another owner.");
            });
    }

    Failure files() {
        for (const auto folder : {kEnvelopeDocumentsFolder, kTemplateDocumentsFolder})
            for (const auto& path : FileJournal::unknownFiles(store_, folder))
                found("file", path, "Nothing names this file.");
        return std::nullopt;
    }

    void expectMode(const fs::path& path, mode_t mode) {
        struct stat status {};
        if (lstat(path.c_str(), &status) != 0) return;
        if (S_ISLNK(status.st_mode)) found("mode", path.string(), "It is a symbolic link.");
        if ((status.st_mode & 0777 & ~mode) != 0)
            found("mode", path.string(), "Others may read or write it.");
    }

    Failure modes() {
        const fs::path user = NVM_getUserDirectoryPath();
        for (const auto& folder : {store_.file().parent_path(), user.parent_path(), user})
            expectMode(folder, 0700);
        for (const char* suffix : {"", "-wal", "-shm"})
            expectMode(store_.file().string() + suffix, 0600);
        for (const auto folder : {kEnvelopeDocumentsFolder, kTemplateDocumentsFolder, kThumbnailsFolder}) {
            expectMode(user / folder, 0700);
            std::error_code none;
            for (const auto& entry : fs::directory_iterator(user / folder, none))
                expectMode(entry.path(), 0600);
        }
        return std::nullopt;
    }

    ObjectStore& store_;
    std::vector<StoreFinding> findings_;
    bool lacksColumns_ = false;
};

std::uintmax_t sizeOf(const fs::path& file) {
    std::error_code error;
    const auto size = fs::file_size(file, error);
    return error ? 0 : size;
}

std::uintmax_t bytesIn(const fs::path& folder) {
    std::uintmax_t bytes = 0;
    std::error_code none;
    for (const auto& entry : fs::directory_iterator(folder, none))
        bytes += sizeOf(entry.path());
    return bytes;
}

std::size_t countOf(Connection& connection, const std::string& rest) {
    const Connection::Prepared statement(connection.prepare("SELECT count(*) FROM " + rest));
    return statement->executeStep() ? static_cast<std::size_t>(statement->getColumn(0).getInt64()) : 0;
}

void countRows(Connection& connection, StoreStatistics& statistics) {
    for (const Entity* entity : Model::current().entities())
        if (const auto count = countOf(connection, sqlName(entity->name())))
            statistics.rows.emplace_back(entity->name(), count);
    const Connection::Prepared byStatus(connection.prepare(
        "SELECT coalesce(status, ''), count(*) FROM NVMCDEnvelopeDefinition GROUP BY 1 ORDER BY 1"));
    while (byStatus->executeStep())
        statistics.envelopesByStatus.emplace_back(
            byStatus->getColumn(0).getString(), static_cast<std::size_t>(byStatus->getColumn(1).getInt64()));
    statistics.envelopes = countOf(connection, "NVMCDEnvelopeDefinition");
    statistics.drafts = countOf(connection, "NVMCDEnvelopeDefinition WHERE status = 'created'");
    statistics.waitingForUpload = countOf(connection, "NVMCDEnvelopeDefinition WHERE syncPending = 1");
    statistics.templates = countOf(connection, "NVMCDEnvelopeTemplate");
    statistics.documents = countOf(connection, "NVMCDDocument");
    statistics.modelVersion = connection.database().execAndGet("PRAGMA user_version").getInt();
}

} // namespace

Result<std::vector<StoreFinding>> checkStore() {
    const auto store = ObjectStore::defaultStore();
    if (!store) return storeNotOpen();
    return StoreCheck(*store).run();
}

Result<StoreStatistics> storeStatistics() {
    const auto store = ObjectStore::defaultStore();
    if (!store) return storeNotOpen();
    StoreStatistics statistics;
    if (auto error = StoreWork::read(*store, [&](Connection& c) { countRows(c, statistics); })) return *error;
    for (const auto folder : {kEnvelopeDocumentsFolder, kTemplateDocumentsFolder})
        statistics.documentBytes += bytesIn(NVM_getUserDirectoryPathWithFolder(folder));
    statistics.storeBytes = sizeOf(store->file());
    statistics.journalBytes = sizeOf(store->file().string() + "-wal");
    return statistics;
}

} // namespace norvane
