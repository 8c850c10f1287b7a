#include "src/store/Connection.h"
#include "src/store/StoreFile.h"
#include "tests/store/DiskLayer.h"
#include "tests/store/StoreFixture.h"

#include <norvane/store/NVMTemplatesMigrationHelper.h>

#include <cerrno>
#include <cstdlib>

namespace norvane {
namespace {

/// Migrations of a small store of version 1, cut short.
class MigrationFaultTest : public StoreFixture {
  protected:
    void SetUp() override { KitFixture::SetUp(); }

    static void makeVersion1() {
        ASSERT_EQ(protectStoreFile(storeFile()), std::nullopt);
        ASSERT_EQ(createSchema(storeFile(), 1), std::nullopt);
        Connection connection(storeFile(), Connection::Use::Writing);
        connection.run("INSERT INTO NVMCDEnvelopeDefinition (envelopeId) VALUES ('kept')");
    }
    static void migrate() {
        NVMTemplatesMigrationHelper::performMigrationForStoreFileName(std::string(ObjectStore::kFileName));
    }
    static std::size_t entriesIn(const std::filesystem::path& folder) {
        std::error_code none;
        const auto entries = std::filesystem::directory_iterator(folder, none);
        return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
    }
    /// Right after the fault one of the two stores is there, whole; the next set-up has the new one, and one
    /// earlier store aside.
    void expectOneOfBoth() {
        EXPECT_TRUE(one("PRAGMA user_version") == "1" || one("PRAGMA user_version") == "2");
        EXPECT_EQ(one("SELECT envelopeId FROM NVMCDEnvelopeDefinition"), "kept");
        migrate();
        openStore();
        EXPECT_EQ(one("PRAGMA user_version"), "2");
        EXPECT_EQ(one("SELECT envelopeId FROM NVMCDEnvelopeDefinition"), "kept");
        EXPECT_EQ(one("PRAGMA integrity_check"), "ok");
        ObjectStore::closeDefaultStore();
        EXPECT_EQ(entriesIn(earlierStoresFolder(storeFile())), 1u);
        EXPECT_FALSE(std::filesystem::exists(storeFile().parent_path() / "NorvaneSDK.NorvaneSDK 2.sqlite"));
    }
    static std::size_t stride() { return std::getenv("NORVANE_ALL_FAULTS") ? 1 : 9; }

    FreeSyncs freeSyncs_;
};

TEST_F(MigrationFaultTest, KilledOrWithoutPowerAtAnyMomentOneOfTheStoresIsThereWhole) {
    std::vector<DiskCall> calls;
    {
        DiskLayer disk(home_.path());
        makeVersion1();
        disk.mark("made");
        migrate();
        calls = disk.calls();
    }
    for (const auto after :
         {DiskImage::After::Kill, DiskImage::After::PowerLoss, DiskImage::After::TornWrite}) {
        DiskImage image;
        bool isMade = false;
        for (std::size_t moment = 0; moment < calls.size() && !HasFailure(); ++moment) {
            SCOPED_TRACE("before call " + std::to_string(moment) + " on " + calls[moment].path);
            const bool nearTheSwap = moment + 12 > calls.size();
            if (isMade && (nearTheSwap || moment % stride() == 0)) {
                image.restore(home_.path(), after, static_cast<unsigned>(moment));
                expectOneOfBoth();
            }
            image.apply(calls[moment]);
            isMade = isMade || calls[moment].kind == DiskCall::Kind::Mark;
        }
    }
}

TEST_F(MigrationFaultTest, AFailureLeavesTheEarlierStore) {
    log_->expect("store migration");
    for (std::size_t at = 0; at < 400 && !HasFailure(); at += 2 * stride()) {
        SCOPED_TRACE("error at call " + std::to_string(at));
        DiskImage().restore(home_.path(), DiskImage::After::Kill, 0);
        makeVersion1();
        std::size_t calls = 0;
        {
            DiskLayer disk(home_.path(), [&](const DiskCall&, std::size_t& size) {
                const bool fails = calls++ == at;
                if (fails) size = 0;
                return fails ? ENOSPC : 0;
            });
            migrate();
        }
        expectOneOfBoth();
    }
}

} // namespace
} // namespace norvane
