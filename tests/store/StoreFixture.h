#pragma once

#include "tests/support/KitFixture.h"

#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/ObjectStore.h>

#include <sqlite3.h>

#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace norvane {

/// A kit with an open store, and eyes of its own on the store's file.
class StoreFixture : public KitFixture {
  protected:
    void SetUp() override {
        KitFixture::SetUp();
        openStore();
    }
    void TearDown() override { ObjectStore::closeDefaultStore(); }

    void openStore() {
        const auto error = ObjectStore::setupDefaultStore();
        ASSERT_EQ(error, std::nullopt) << error->localizedDescription();
    }
    /// As another run of the host would find it.
    void reopenStore() {
        ObjectStore::closeDefaultStore();
        openStore();
    }
    static std::shared_ptr<ObjectStore> store() { return ObjectStore::defaultStore(); }
    static ManagedObjectContext& context() { return store()->defaultContext(); }
    static std::filesystem::path storeFile() {
        return Platform::current().files->supportFolder() / "NorvaneSDK.sqlite";
    }

    /// The first column of each row that a query gives on a connection of the test's own.
    static std::vector<std::string> query(const std::string& sql) { return run(sql, true); }
    /// Changes what stands in the file as rot does, which sets off no trigger.
    static void damage(const std::string& sql) { run(sql, false); }
    static std::vector<std::string> run(const std::string& sql, bool withTriggers) {
        std::vector<std::string> rows;
        sqlite3* database = nullptr;
        EXPECT_EQ(sqlite3_open_v2(storeFile().c_str(), &database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE,
                                  nullptr),
                  SQLITE_OK);
        sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_TRIGGER, withTriggers ? 1 : 0, nullptr);
        const auto add = [](void* list, int count, char** values, char**) {
            static_cast<std::vector<std::string>*>(list)->push_back(count > 0 && values[0] ? values[0]
                                                                                           : "NULL");
            return 0;
        };
        char* message = nullptr;
        EXPECT_EQ(sqlite3_exec(database, sql.c_str(), add, &rows, &message), SQLITE_OK) << message;
        sqlite3_free(message);
        sqlite3_close(database);
        return rows;
    }
    static std::string one(const std::string& sql) {
        const auto rows = query(sql);
        return rows.empty() ? "" : rows.front();
    }
    static std::vector<std::string> tables() {
        return query(
            "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite_%' ORDER BY name");
    }
    /// Rows of all entities and of the kit's own bookkeeping but its metadata, by table; empty tables are
    /// left out.
    static std::map<std::string, std::string> rowCounts() {
        std::map<std::string, std::string> counts;
        for (const auto& table : tables()) {
            const auto count = one("SELECT count(*) FROM " + table);
            if (table != "nv_metadata" && count != "0") counts[table] = count;
        }
        return counts;
    }
    static std::vector<std::string> filesIn(const std::string& folder) {
        std::vector<std::string> files;
        std::error_code none;
        for (const auto& entry : std::filesystem::directory_iterator(
                 Platform::current().files->documentsFolder() / "userId" / folder, none))
            files.push_back("/userId/" + folder + "/" + entry.path().filename().string());
        return files;
    }
};

/// Remembers every notification while it lives.
class NotificationLog {
  public:
    NotificationLog()
        : token_(Platform::current().notifications->addObserver({}, [this](const Notification& notification) {
            const std::lock_guard lock(mutex_);
            posted_.push_back(notification);
        })) {}

    std::vector<std::string> names() const {
        const std::lock_guard lock(mutex_);
        std::vector<std::string> names;
        for (const auto& notification : posted_)
            names.push_back(notification.name);
        return names;
    }
    /// The user information of the first of that name; empty when none was posted.
    Dictionary first(std::string_view name) const {
        const std::lock_guard lock(mutex_);
        for (const auto& notification : posted_)
            if (notification.name == name) return notification.userInfo;
        return {};
    }
    std::size_t count(std::string_view name) const {
        const std::lock_guard lock(mutex_);
        std::size_t count = 0;
        for (const auto& notification : posted_)
            count += notification.name == name ? 1 : 0;
        return count;
    }

  private:
    mutable std::mutex mutex_; ///< guards `posted_`
    std::vector<Notification> posted_;
    std::shared_ptr<void> token_;
};

} // namespace norvane
