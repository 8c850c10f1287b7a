#pragma once

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>
#include <SQLiteCpp/Statement.h>

#include <filesystem>
#include <memory>
#include <string>
#include <unordered_map>

namespace norvane {

/// A connection could not be opened; it takes errno along, because the handle that knows it is gone.
class OpeningFailed : public SQLite::Exception {
  public:
    OpeningFailed(const SQLite::Exception& cause, int systemErrorNumber)
        : SQLite::Exception(cause)
        , systemError(systemErrorNumber) {}
    const int systemError;
};

/// One connection to the store's file with its prepared statements. For one thread at a time. Everything may
/// throw SQLite::Exception.
class Connection {
  public:
    enum class Use { Reading, Writing };
    static constexpr int kBusyMilliseconds = 10'000;

    /// Opens an existing file.
    Connection(const std::filesystem::path& file, Use use);

    /// A prepared statement, clean for use; it is reset when the object goes, so nothing that was bound
    /// without a copy is looked at afterwards.
    class Prepared {
      public:
        explicit Prepared(SQLite::Statement& statement)
            : statement_(&statement) {}
        ~Prepared();
        Prepared(const Prepared&) = delete;
        Prepared& operator=(const Prepared&) = delete;
        SQLite::Statement* operator->() const { return statement_; }
        SQLite::Statement& operator*() const { return *statement_; }

      private:
        SQLite::Statement* statement_;
    };

    /// The statement of a text that lives as long as the process; prepared once a connection.
    Prepared kept(const std::string& sql);
    /// The statement of a text made for the occasion, to be wrapped in `Prepared`; kept for a while too. One
    /// at a time.
    SQLite::Statement& prepare(const std::string& sql);
    void run(const char* sql) { database_.exec(sql); }

    SQLite::Database& database() { return database_; }
    sqlite3* handle() { return database_.getHandle(); }

  private:
    SQLite::Database database_;
    std::unordered_map<const std::string*, std::unique_ptr<SQLite::Statement>> kept_;
    std::unordered_map<std::string, std::unique_ptr<SQLite::Statement>> byText_;
};

/// A transaction that is rolled back unless it was committed.
class WriteTransaction {
  public:
    explicit WriteTransaction(Connection& connection);
    ~WriteTransaction();
    WriteTransaction(const WriteTransaction&) = delete;
    WriteTransaction& operator=(const WriteTransaction&) = delete;
    void commit();

  private:
    Connection& connection_;
    bool open_ = true;
};

} // namespace norvane
