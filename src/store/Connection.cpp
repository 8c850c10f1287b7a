#include "src/store/Connection.h"

#include <sqlite3.h>

namespace norvane {

namespace {

/// Statements made for the occasion come from a handful of requests; a host that makes up many does not grow
/// the cache without end.
constexpr std::size_t kOccasionalStatements = 64;

} // namespace

Connection::Connection(const std::filesystem::path& file, Use use)
    : database_(file.string(), SQLite::OPEN_READWRITE | SQLite::OPEN_NOMUTEX | SQLite::OPEN_NOFOLLOW,
                kBusyMilliseconds) {
    sqlite3_extended_result_codes(handle(), 1);
    // A column that is not there is an error, not a text of its name.
    sqlite3_db_config(handle(), SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(handle(), SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    // The triggers tell what others change.
    sqlite3_db_config(handle(), SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    try {
        run("PRAGMA trusted_schema = OFF");
        run("PRAGMA cell_size_check = ON");
        run("PRAGMA foreign_keys = ON");
        run("PRAGMA secure_delete = ON");
        run("PRAGMA synchronous = FULL");
        if (use == Use::Reading) run("PRAGMA query_only = ON");
    } catch (const SQLite::Exception& exception) {
        throw OpeningFailed(exception, sqlite3_system_errno(handle()));
    }
}

Connection::Prepared::~Prepared() {
    statement_->tryReset();
    statement_->clearBindings(); // never fails for a statement that was reset
}

Connection::Prepared Connection::kept(const std::string& sql) {
    auto& slot = kept_[&sql];
    if (!slot) slot = std::make_unique<SQLite::Statement>(database_, sql);
    return Prepared(*slot);
}

SQLite::Statement& Connection::prepare(const std::string& sql) {
    if (byText_.size() >= kOccasionalStatements && !byText_.contains(sql)) byText_.clear();
    auto& slot = byText_[sql];
    if (!slot) slot = std::make_unique<SQLite::Statement>(database_, sql);
    return *slot;
}

WriteTransaction::WriteTransaction(Connection& connection)
    : connection_(connection) {
    connection_.run("BEGIN IMMEDIATE");
}

WriteTransaction::~WriteTransaction() {
    // A statement that failed for want of space may have rolled everything back by itself.
    if (open_ && sqlite3_get_autocommit(connection_.handle()) == 0)
        sqlite3_exec(connection_.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void WriteTransaction::commit() {
    connection_.run("COMMIT");
    open_ = false;
}

} // namespace norvane
