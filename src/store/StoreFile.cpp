#include "src/store/StoreFile.h"

#include "src/platform/DurableFile.h"
#include "src/store/Connection.h"
#include "src/store/Schema.h"
#include "src/store/StoreErrorOf.h"

#include <norvane/platform/Url.h>

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>

#include <cerrno>
#include <optional>
#include <string>

namespace norvane {

namespace {

constexpr std::string_view kMagic("SQLite format 3\0", 16);

/// What the file's first bytes say: a file that is no database never gets as far as SQLite.
Result<StoreFileKind> kindByHeader(const std::filesystem::path& file) {
    const auto descriptor = openForReading(file, false);
    if (!descriptor) {
        if (descriptor.error().code == ENOENT) return StoreFileKind::Missing;
        return descriptor.error();
    }
    char header[16];
    const auto count = readSome(*descriptor, header, sizeof header, file);
    if (!count) return count.error();
    if (*count == 0) return StoreFileKind::Empty;
    return std::string_view(header, *count) == kMagic ? StoreFileKind::Store : StoreFileKind::Foreign;
}

int number(SQLite::Database& database, const char* sql) { return database.execAndGet(sql).getInt(); }

StoreFileIdentity identityOf(SQLite::Database& database) {
    if (number(database, "SELECT count(*) FROM sqlite_master") == 0) return {StoreFileKind::Empty};
    if (!database.tableExists("NVMCDEnvelopeDefinition")) return {StoreFileKind::Foreign};
    const int version = number(database, "PRAGMA user_version");
    if (version != 0 || !database.tableExists("nv_metadata")) return {StoreFileKind::Store, version};
    return {StoreFileKind::Store,
            number(database, "SELECT coalesce(max(value), 0) FROM nv_metadata WHERE key = 'modelVersion'")};
}

/// For reading alone. A store that is in use has a journal; beside one that has none SQLite lays nothing down
/// either.
SQLite::Database openToLook(const std::filesystem::path& file) {
    const std::string address = Url::fromFilePath(file.string()).absoluteString();
    std::error_code ignored;
    const bool isAlone = !std::filesystem::exists(file.string() + "-wal", ignored) &&
                         !std::filesystem::exists(file.string() + "-journal", ignored);
    const int flags = SQLite::OPEN_URI | SQLite::OPEN_NOFOLLOW;
    if (isAlone) return {address + "?immutable=1", flags | SQLite::OPEN_READONLY};
    return {address, flags | SQLite::OPEN_READWRITE, Connection::kBusyMilliseconds};
}

void writeSchema(Connection& connection, int modelVersion) {
    WriteTransaction transaction(connection);
    if (identityOf(connection.database()).kind != StoreFileKind::Empty) return;
    for (const auto& statement : Schema::ofVersion(modelVersion).statements())
        connection.run(statement.c_str());
    transaction.commit();
}

} // namespace

Result<FileLock> lockForSetUp(const std::filesystem::path& file) {
    auto lockFile = file;
    lockFile += ".lock";
    return FileLock::acquire(lockFile);
}

Result<StoreFileIdentity> identifyStoreFile(const std::filesystem::path& file) {
    const auto kind = kindByHeader(file);
    if (!kind) return kind.error();
    if (*kind != StoreFileKind::Store) return StoreFileIdentity{*kind};
    std::optional<SQLite::Database> database;
    try {
        database.emplace(openToLook(file));
        // Otherwise closing would bring the journal into a file that may not be ours to touch.
        sqlite3_db_config(database->getHandle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
        return identityOf(*database);
    } catch (const SQLite::Exception& exception) {
        if (exception.getErrorCode() == SQLITE_NOTADB) return StoreFileIdentity{StoreFileKind::Foreign};
        return storeErrorOf(exception, database ? database->getHandle() : nullptr);
    }
}

Failure protectStoreFile(const std::filesystem::path& file) {
    // SQLite gives the companions the file's mode, but it would follow a link that somebody laid in their
    // place.
    for (const char* suffix : {"-wal", "-shm", "-journal"}) {
        auto companion = file;
        companion += suffix;
        struct stat status {};
        if (lstat(companion.c_str(), &status) == 0 && !S_ISREG(status.st_mode))
            return fileError(ELOOP, companion);
    }
    const FileDescriptor descriptor(open(file.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (!descriptor.isOpen() || fchmod(descriptor.get(), 0600) != 0) return fileError(errno, file);
    return std::nullopt;
}

Failure createSchema(const std::filesystem::path& file, int modelVersion) {
    std::unique_ptr<Connection> connection;
    try {
        connection = std::make_unique<Connection>(file, Connection::Use::Writing);
        connection->run("PRAGMA journal_mode = WAL");
        writeSchema(*connection, modelVersion);
        return std::nullopt;
    } catch (const SQLite::Exception& exception) {
        return storeErrorOf(exception, connection ? connection->handle() : nullptr);
    }
}

} // namespace norvane
