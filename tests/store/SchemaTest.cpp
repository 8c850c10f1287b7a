#include "tests/store/StoreFixture.h"

#include <norvane/store/NVMCDEnvelopes.h>
#include <norvane/store/NVMCDTemplates.h>
#include <norvane/store/StoreErrors.h>

#include <sys/stat.h>

#include <algorithm>
#include <fstream>

namespace norvane {
namespace {

class SchemaTest : public StoreFixture {
  protected:
    static std::vector<std::string> columns(const std::string& table) {
        return query("SELECT name FROM pragma_table_info('" + table + "')");
    }
    static bool hasColumn(const std::string& table, const std::string& column) {
        const auto names = columns(table);
        return std::find(names.begin(), names.end(), column) != names.end();
    }
};

TEST_F(SchemaTest, NamesTablesAndColumnsAsTheModelDoes) {
    for (const RecordType* type :
         {&NVMCDEnvelopeDefinition::type(), &NVMCDTab::type(), &NVMCDEnvelopeTemplate::type()}) {
        for (const Field& field : type->fields()) {
            if (field.reference) continue;
            EXPECT_TRUE(hasColumn(std::string(type->name()), std::string(field.name))) << field.name;
        }
    }
    EXPECT_EQ(one("SELECT count(*) FROM sqlite_master WHERE name GLOB 'NVMCD*'"), "34");
    EXPECT_TRUE(hasColumn("NVMCDBCCEmailAddress", "emailSettigs"));
    EXPECT_TRUE(hasColumn("NVMCDTab", "type"));
    EXPECT_TRUE(hasColumn("NVMCDRecipient", "inPersonSigner"));
    EXPECT_TRUE(hasColumn("NVMCDRecipient", "envelopeDefinition"));
    EXPECT_TRUE(hasColumn("NVMCDExpirations", "useAccountDefaults"));
    EXPECT_EQ(one("PRAGMA user_version"), "2");
    EXPECT_EQ(one("SELECT value FROM nv_metadata WHERE key = 'modelVersion'"), "2");
    EXPECT_EQ(one("PRAGMA journal_mode"), "wal");
}

TEST_F(SchemaTest, EveryInverseIsAnIndexedReferenceThatRemovesWithItsOwner) {
    for (const auto& table : tables()) {
        for (const auto& row :
             query("SELECT \"from\" || ' ' || on_delete FROM pragma_foreign_key_list('" + table + "')")) {
            const auto column = row.substr(0, row.find(' '));
            EXPECT_EQ(row.substr(row.find(' ') + 1), "CASCADE") << table << "." << column;
            EXPECT_EQ(one("SELECT count(*) FROM sqlite_master WHERE type = 'index' AND name = '_" + table +
                          "_" + column + "'"),
                      "1")
                << table << "." << column;
        }
    }
}

TEST_F(SchemaTest, KeepsItsFilesForThisUserAlone) {
    context().insert(std::make_shared<NVMCDEnvelopeDefinition>());
    ASSERT_EQ(context().save(), std::nullopt);
    for (const char* suffix : {"", "-wal", "-shm"}) {
        struct stat status {};
        ASSERT_EQ(stat((storeFile().string() + suffix).c_str(), &status), 0) << suffix;
        EXPECT_EQ(status.st_mode & 0777, 0600u) << suffix;
    }
}

class StoreOpeningTest : public StoreFixture {
  protected:
    void SetUp() override { KitFixture::SetUp(); }

    static std::string content() {
        std::ifstream stream(storeFile(), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    static void write(const std::string& bytes) { std::ofstream(storeFile(), std::ios::binary) << bytes; }

    /// Refused with that code, and not a byte of it changed.
    static void expectRefusal(StoreError code) {
        const std::string before = content();
        const auto opened = ObjectStore::open();
        ASSERT_FALSE(opened.ok());
        EXPECT_EQ(opened.error().code, static_cast<std::int64_t>(code));
        EXPECT_EQ(content(), before);
        for (const char* suffix : {"-wal", "-shm", "-journal"})
            EXPECT_FALSE(std::filesystem::exists(storeFile().string() + suffix)) << suffix;
    }
};

TEST_F(StoreOpeningTest, LeavesWhatIsNoStoreAlone) {
    write("not a database at all, but the user's own notes");
    expectRefusal(StoreError::NotAStore);
    write(std::string("SQLite format 3\0", 16) + std::string(4000, 'x'));
    expectRefusal(StoreError::NotAStore);
    std::filesystem::remove(storeFile());
    query("CREATE TABLE somethingElse (x)");
    expectRefusal(StoreError::NotAStore);
}

TEST_F(StoreOpeningTest, LeavesStoresOfOtherModelsAlone) {
    openStore();
    ObjectStore::closeDefaultStore();
    query("PRAGMA user_version = 3");
    expectRefusal(StoreError::NewerModel);
    query("PRAGMA user_version = 1");
    expectRefusal(StoreError::OlderModel);
}

TEST_F(StoreOpeningTest, TakesUpAStoreWhoseMakingWasCutShort) {
    write("");
    openStore();
    EXPECT_EQ(one("PRAGMA user_version"), "2");
}

TEST_F(StoreOpeningTest, NeedsNobodyElsesLeaveToRead) {
    openStore();
    ObjectStore::closeDefaultStore();
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(storeFile().c_str(), &other), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    const auto opened = ObjectStore::open();
    sqlite3_close(other);
    EXPECT_TRUE(opened.ok()) << "a process that writes for long was waited for";
}

TEST_F(StoreOpeningTest, GivesErrorsOnceItIsClosed) {
    openStore();
    const auto kept = store();
    ManagedObjectContext own(kept);
    ObjectStore::closeDefaultStore();
    EXPECT_EQ(own.count(NVMCDEnvelopeDefinition::fetchRequest()).error().code,
              static_cast<std::int64_t>(StoreError::NotOpen));
    own.insert(std::make_shared<NVMCDEnvelopeDefinition>());
    EXPECT_EQ(own.save()->code, static_cast<std::int64_t>(StoreError::NotOpen));
}

} // namespace
} // namespace norvane
