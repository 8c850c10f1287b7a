#include "src/store/Connection.h"
#include "src/store/Schema.h"
#include "src/store/StoreFile.h"
#include "src/store/Trees.h"
#include "tests/store/RandomTree.h"
#include "tests/store/StoreFixture.h"

#include <norvane/store/NVMCDEnvelopes.h>
#include <norvane/store/NVMTemplatesMigrationHelper.h>
#include <norvane/store/StoreErrors.h>

#include <sys/stat.h>

#include <algorithm>

namespace norvane {
namespace {

constexpr int kEnvelopes = 1'000;

/// Each has a recipient with two tabs, one of which held an alignment.
std::shared_ptr<NVMCDEnvelopeDefinition> envelope(int number) {
    auto envelope = std::make_shared<NVMCDEnvelopeDefinition>();
    envelope->envelopeId = "envelope " + std::to_string(number);
    envelope->transactionId = envelope->envelopeId;
    envelope->syncPending = number % 2;
    envelope->recipients = std::make_shared<NVMCDRecipients>();
    auto recipient = std::make_shared<NVMCDRecipient>();
    recipient->recipientId = "1";
    recipient->name = "Signer " + std::to_string(number);
    recipient->tabs = std::make_shared<NVMCDTabs>();
    auto& tabs = recipient->tabs->textTabs.emplace();
    for (const char* alignment : {"1", ""}) {
        auto tab = std::make_shared<NVMCDTab>();
        tab->tabLabel = std::string("alignment ") + alignment;
        if (*alignment) tab->anchorHorizontalAlignment = alignment;
        tabs.push_back(tab);
    }
    envelope->recipients->signers.emplace().push_back(recipient);
    return envelope;
}

class MigrationTest : public StoreFixture {
  protected:
    void SetUp() override { KitFixture::SetUp(); }

    /// A store of version 1, written by that version's model. It takes texts for numbers as its columns do.
    static void makeVersion1(int envelopes, bool random = false) {
        ASSERT_EQ(protectStoreFile(storeFile()), std::nullopt);
        ASSERT_EQ(createSchema(storeFile(), 1), std::nullopt);
        Connection connection(storeFile(), Connection::Use::Writing);
        WriteTransaction transaction(connection);
        TreeWriter writer(connection, TreeWriter::Seals::None);
        const Entity& entity = Model::current().entity(NVMCDEnvelopeDefinition::type());
        for (int number = 0; number < envelopes; ++number) {
            auto made = random ? RandomTree(static_cast<unsigned>(number)).make<NVMCDEnvelopeDefinition>()
                               : envelope(number);
            writer.insert(entity, made.get());
        }
        connection.run("INSERT INTO nv_uploadAttempt VALUES ('envelope 1', 5, 'unknown', NULL)");
        transaction.commit();
    }
    static void migrate() {
        NVMTemplatesMigrationHelper::performMigrationForStoreFileName("NorvaneSDK.sqlite");
    }
    static std::vector<std::filesystem::path> keptAside() {
        std::vector<std::filesystem::path> files;
        std::error_code none;
        for (const auto& entry : std::filesystem::directory_iterator(earlierStoresFolder(storeFile()), none))
            files.push_back(entry.path());
        return files;
    }
    static mode_t modeOf(const std::filesystem::path& path) {
        struct stat status {};
        EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
        return status.st_mode & 0777;
    }
};

TEST_F(MigrationTest, AVersion1StoreOfAThousandEnvelopesComesOverOnce) {
    makeVersion1(kEnvelopes);
    chmod(storeFile().c_str(), 0644);
    EXPECT_EQ(one("SELECT typeof(anchorHorizontalAlignment) FROM NVMCDTab"), "integer");
    const auto before = rowCounts();
    migrate();
    openStore();
    EXPECT_EQ(rowCounts(), before);
    EXPECT_EQ(one("PRAGMA user_version"), "2");
    EXPECT_EQ(one("PRAGMA integrity_check"), "ok");
    EXPECT_EQ(query("SELECT DISTINCT tabLabel || ':' || coalesce(anchorHorizontalAlignment, 'nothing') FROM "
                    "NVMCDTab"),
              (std::vector<std::string>{"alignment 1:left", "alignment :nothing"}));
    const auto last =
        context().fetchFirst<NVMCDEnvelopeDefinition>(NVMCDEnvelopeDefinition::fetchRequest().where(
            "envelopeId", FetchRequest::Match::Equal, "envelope 999"));
    ASSERT_TRUE(last.ok() && *last);
    EXPECT_EQ((*last)->recipients->signers->front()->name, "Signer 999");
    EXPECT_EQ((*last)->syncPending, 1);
    EXPECT_EQ(one("SELECT count(*) FROM nv_uploadAttempt"), "1") << "an attempt that is not settled";
    EXPECT_EQ(one("SELECT count(_seal) FROM NVMCDEnvelopeDefinition"), "1000");
    ASSERT_EQ(keptAside().size(), 1u);
    EXPECT_EQ(modeOf(earlierStoresFolder(storeFile())), 0700u);
    EXPECT_EQ(modeOf(keptAside().front()), 0600u);
    reopenStore();
    migrate();
    EXPECT_EQ(keptAside().size(), 1u) << "migrated twice";
}

TEST_F(MigrationTest, OfAnArbitraryGraphNothingChangesButTheAlignment) {
    makeVersion1(20, true);
    std::vector<std::shared_ptr<void>> before;
    const Entity& entity = Model::current().entity(NVMCDEnvelopeDefinition::type());
    {
        Connection connection(storeFile(), Connection::Use::Writing);
        connection.run(
            "UPDATE NVMCDTab SET anchorHorizontalAlignment = 'left' WHERE anchorHorizontalAlignment IS "
            "NOT NULL");
        // Today's entities read a column that version 1 lacks.
        connection.run("ALTER TABLE NVMCDEnvelopeDefinition ADD COLUMN _seal TEXT");
        for (int row = 1; row <= 20; ++row)
            before.push_back(loadTreeUnchecked(connection, entity, row));
        connection.run(
            "UPDATE NVMCDTab SET anchorHorizontalAlignment = 2 WHERE anchorHorizontalAlignment = 'left'");
    }
    migrate();
    openStore();
    for (int row = 1; row <= 20; ++row) {
        const auto after = context().objectWithID<NVMCDEnvelopeDefinition>({entity.name(), row});
        ASSERT_TRUE(after.ok() && *after);
        EXPECT_TRUE(equalRecords(*entity.type, before[static_cast<std::size_t>(row - 1)].get(), after->get()))
            << row;
    }
}

TEST_F(MigrationTest, AHandMadeStoreNeedsOnlyTheTablesThatItFills) {
    query("PRAGMA user_version = 1; CREATE TABLE NVMCDEnvelopeDefinition (_id INTEGER PRIMARY KEY, "
          "envelopeId TEXT);"
          "INSERT INTO NVMCDEnvelopeDefinition VALUES (7, 'by hand')");
    migrate();
    openStore();
    EXPECT_EQ(one("SELECT _id || envelopeId FROM NVMCDEnvelopeDefinition"), "7by hand");
}

TEST_F(MigrationTest, AStoreThatCannotBeMigratedStaysAndSetUpSaysWhy) {
    makeVersion1(1);
    query("DROP TABLE NVMCDTab; CREATE TABLE NVMCDTab (tabId TEXT)");
    log_->expect("store migration");
    migrate();
    EXPECT_EQ(one("PRAGMA user_version"), "1");
    EXPECT_EQ(ObjectStore::setupDefaultStore()->code, static_cast<std::int64_t>(StoreError::OlderModel));
    EXPECT_TRUE(keptAside().empty());
    EXPECT_FALSE(std::filesystem::exists(storeFile().parent_path() / "NorvaneSDK.NorvaneSDK 2.sqlite"));
}

class ChoosingDelegate final : public MigrationDelegate {
  public:
    std::vector<MappingModel> mappingModelsForSourceModel(int sourceVersion) override {
        asked.push_back(sourceVersion);
        return chosen;
    }
    std::vector<int> asked;
    std::vector<MappingModel> chosen;
};

TEST_F(MigrationTest, GoesStepByStepWithWhatTheDelegateChooses) {
    makeVersion1(1);
    NVMMHWMigrationManager none{std::vector<MappingModel>{}};
    const auto missing = none.progressivelyMigrate(storeFile(), 2);
    EXPECT_EQ(missing->code, kMigrationErrorCode);
    EXPECT_EQ(missing->localizedDescription(), "No mapping model found in bundle");
    ChoosingDelegate delegate;
    delegate.chosen = NVMTemplatesMigrationHelper().mappingModelsForSourceModel(1);
    none.delegate = &delegate;
    EXPECT_EQ(none.progressivelyMigrate(storeFile(), 2), std::nullopt);
    EXPECT_EQ(delegate.asked, std::vector<int>{1});
    EXPECT_TRUE(NVMTemplatesMigrationHelper().mappingModelsForSourceModel(2).empty());
}

} // namespace
} // namespace norvane
