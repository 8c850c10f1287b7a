#include "bench/BenchHome.h"

#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/platform/Platform.h>
#include <norvane/sdk/NVMManager.h>
#include <norvane/store/NVMEnvelopesHandler.h>
#include <norvane/store/ObjectStore.h>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <future>
#include <string>
#include <vector>

// Caching an envelope of forty tabs, beside raw sqlite3 inserting the very rows that it made; and set-up.

namespace norvane::bench {

namespace {

NVMEnvelopeDefinition envelope() {
    NVMEnvelopeDefinition result;
    result.emailSubject = "Lease of 14 Quay Street";
    result.status = "sent";
    result.recipients = std::make_shared<NVMRecipients>();
    auto signer = std::make_shared<NVMSigner>();
    signer->recipientId = "1";
    signer->name = "Ann Smith";
    signer->email = "ann@example.com";
    signer->signedDateTime = Platform::current().clock->now();
    signer->tabs = std::make_shared<NVMTabs>();
    for (int number = 0; number < 40; ++number) {
        auto tab = std::make_shared<NVMText>();
        tab->tabId = std::to_string(number);
        tab->tabLabel = "Entry " + std::to_string(number);
        tab->documentId = "1";
        tab->recipientId = "1";
        tab->value = "The value of the entry";
        tab->pageNumber = 1;
        tab->frame = std::make_shared<NVMTabFrame>(10, 20 * number, 84, 18);
        signer->tabs->addTab(tab);
    }
    result.recipients->addRecipient(signer);
    return result;
}

bool cacheOnce(const NVMEnvelopeDefinition& definition) {
    std::promise<bool> cached;
    NVMEnvelopesHandler::cacheEnvelope(definition,
                                       [&](const Failure& failure) { cached.set_value(!failure); });
    return cached.get_future().get();
}

std::string storeFile() { return (benchHome() / "support" / "NorvaneSDK.sqlite").string(); }

void setUp() {
    benchHome();
    static const bool once = [] {
        NVMManager::setup();
        return true;
    }();
    benchmark::DoNotOptimize(once);
}

void cacheKit(benchmark::State& state) {
    setUp();
    const NVMEnvelopeDefinition definition = envelope();
    for (auto _ : state)
        if (!cacheOnce(definition)) state.SkipWithError("the envelope was not cached");
}

/// The tables of the store with the rows that one envelope makes, for inserting them again by hand.
class RawInsertion {
  public:
    RawInsertion() {
        setUp();
        std::vector<std::int64_t> before = rowCounts();
        if (!cacheOnce(envelope())) return;
        sqlite3_open((benchHome() / "raw.sqlite").c_str(), &database_);
        exec("PRAGMA journal_mode=WAL");
        exec("PRAGMA synchronous=FULL");
        exec("PRAGMA secure_delete=ON");
        exec("ATTACH '" + storeFile() + "' AS kit");
        copySchema();
        readRows(before);
        exec("DETACH kit");
    }
    ~RawInsertion() {
        for (const Row& row : rows_)
            sqlite3_finalize(row.statement);
        sqlite3_close(database_);
    }

    bool insertAll() {
        exec("BEGIN IMMEDIATE");
        for (const Row& row : rows_) {
            for (std::size_t column = 0; column < row.values.size(); ++column)
                bind(row.statement, column, row.values[column]);
            if (sqlite3_step(row.statement) != SQLITE_DONE) return false;
            sqlite3_reset(row.statement);
        }
        return exec("COMMIT") && !rows_.empty();
    }
    std::size_t rowCount() const { return rows_.size(); }

  private:
    struct Row {
        sqlite3_stmt* statement; ///< of its own, prepared once
        std::vector<sqlite3_value*> values;
    };

    std::vector<std::string> tables() {
        std::vector<std::string> names;
        sqlite3* kit = nullptr;
        sqlite3_open_v2(storeFile().c_str(), &kit, SQLITE_OPEN_READONLY, nullptr);
        sqlite3_stmt* list = nullptr;
        sqlite3_prepare_v2(kit, "SELECT name FROM sqlite_master WHERE type='table' AND name LIKE 'NVMCD%'",
                           -1, &list, nullptr);
        while (sqlite3_step(list) == SQLITE_ROW)
            names.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(list, 0)));
        sqlite3_finalize(list);
        sqlite3_close(kit);
        return names;
    }

    std::vector<std::int64_t> rowCounts() {
        std::vector<std::int64_t> counts;
        sqlite3* kit = nullptr;
        sqlite3_open_v2(storeFile().c_str(), &kit, SQLITE_OPEN_READONLY, nullptr);
        for (const std::string& table : tables()) {
            sqlite3_stmt* count = nullptr;
            sqlite3_prepare_v2(kit, ("SELECT coalesce(max(rowid), 0) FROM " + table).c_str(), -1, &count,
                               nullptr);
            sqlite3_step(count);
            counts.push_back(sqlite3_column_int64(count, 0));
            sqlite3_finalize(count);
        }
        sqlite3_close(kit);
        return counts;
    }

    bool exec(const std::string& statement) {
        return sqlite3_exec(database_, statement.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
    }

    void copySchema() {
        std::vector<std::string> statements;
        sqlite3_stmt* list = nullptr;
        sqlite3_prepare_v2(
            database_,
            "SELECT sql FROM kit.sqlite_master WHERE sql IS NOT NULL AND type IN ('table', 'index') AND "
            "tbl_name LIKE 'NVMCD%'",
            -1, &list, nullptr);
        while (sqlite3_step(list) == SQLITE_ROW)
            statements.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(list, 0)));
        sqlite3_finalize(list);
        for (const std::string& statement : statements)
            exec(statement);
    }

    /// Every row but its key, which the raw store gives anew.
    void readRows(const std::vector<std::int64_t>& before) {
        std::size_t index = 0;
        for (const std::string& table : tables()) {
            sqlite3_stmt* select = nullptr;
            const std::string newer =
                " FROM kit." + table + " WHERE rowid > " + std::to_string(before[index++]);
            if (sqlite3_prepare_v2(database_, ("SELECT *" + newer).c_str(), -1, &select, nullptr) !=
                SQLITE_OK)
                continue;
            while (sqlite3_step(select) == SQLITE_ROW)
                addRow(table, select);
            sqlite3_finalize(select);
        }
    }

    void addRow(const std::string& table, sqlite3_stmt* select) {
        Row row{};
        const int columns = sqlite3_column_count(select);
        std::string insert = "INSERT INTO main." + table + " VALUES (NULL";
        for (int column = 1; column < columns; ++column)
            insert += ", ?";
        sqlite3_prepare_v2(database_, (insert + ")").c_str(), -1, &row.statement, nullptr);
        for (int column = 1; column < columns; ++column)
            row.values.push_back(sqlite3_value_dup(sqlite3_column_value(select, column)));
        rows_.push_back(std::move(row));
    }

    static void bind(sqlite3_stmt* statement, std::size_t column, sqlite3_value* value) {
        sqlite3_bind_value(statement, static_cast<int>(column) + 1, value);
    }

    sqlite3* database_ = nullptr;
    std::vector<Row> rows_;
};

void cacheLimit(benchmark::State& state) {
    static RawInsertion raw;
    for (auto _ : state)
        if (!raw.insertAll()) state.SkipWithError("the rows could not be inserted");
    state.counters["rows"] = static_cast<double>(raw.rowCount());
}

void setUpKit(benchmark::State& state) {
    setUp();
    for (auto _ : state) {
        ObjectStore::closeDefaultStore(); // a store that is open is kept
        NVMManager::setup();
        if (NVMManager::setupError()) state.SkipWithError("set-up failed");
    }
}

BENCHMARK(cacheKit)->Name("cache 40 tabs : raw sqlite3/kit")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(cacheLimit)
    ->Name("cache 40 tabs : raw sqlite3/limit")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(setUpKit)->Name("set-up with an existing store/kit")->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

} // namespace norvane::bench
