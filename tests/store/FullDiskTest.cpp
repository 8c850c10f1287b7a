#include "tests/store/FaultyDisk.h"
#include "tests/store/RandomTree.h"
#include "tests/store/StoreFixture.h"

#include <norvane/store/NVMCDEnvelopes.h>
#include <norvane/store/StoreErrors.h>

#include <atomic>

namespace norvane {
namespace {

class FullDiskTest : public StoreFixture {
  protected:
    void SetUp() override {
        KitFixture::SetUp();
        openStore();
    }

    std::atomic<int> fault_ = SQLITE_OK;
    std::atomic<int> writesLeft_ = 0;
    FaultyDisk disk_{[this](std::string_view call) -> int {
        if (call != "write" || fault_ == SQLITE_OK) return SQLITE_OK;
        return writesLeft_-- > 0 ? SQLITE_OK : fault_.load();
    }};
};

TEST_F(FullDiskTest, IsToldAsSuchAndTheStoreGoesOnAfterwards) {
    const auto kept = RandomTree(1).make<NVMCDEnvelopeDefinition>();
    context().insert(kept);
    ASSERT_EQ(context().save(), std::nullopt);
    const auto before = rowCounts();
    for (int writes = 0; writes < 12; writes += 3) {
        writesLeft_ = writes;
        fault_ = SQLITE_FULL;
        context().insert(RandomTree(2).make<NVMCDEnvelopeDefinition>());
        const auto error = context().save();
        fault_ = SQLITE_OK;
        ASSERT_TRUE(error) << writes;
        EXPECT_TRUE(isDiskFull(*error)) << error->localizedDescription();
        EXPECT_EQ(error->userInfo.at(std::string(kStoreResultCodeKey)), Value(SQLITE_FULL));
        EXPECT_EQ(rowCounts(), before);
    }
    const auto loaded = context().objectWithID<NVMCDEnvelopeDefinition>(kept->objectID);
    EXPECT_TRUE(equalRecords(NVMCDEnvelopeDefinition::type(), kept.get(), loaded->get()));
    context().insert(RandomTree(2).make<NVMCDEnvelopeDefinition>());
    EXPECT_EQ(context().save(), std::nullopt);
    EXPECT_EQ(one("PRAGMA integrity_check"), "ok");
}

TEST_F(FullDiskTest, OtherFailuresKeepTheirEvidence) {
    fault_ = SQLITE_IOERR_WRITE;
    context().insert(RandomTree(2).make<NVMCDEnvelopeDefinition>());
    const auto error = context().save();
    fault_ = SQLITE_OK;
    ASSERT_TRUE(error);
    EXPECT_FALSE(isDiskFull(*error));
    EXPECT_EQ(error->userInfo.at(std::string(kStoreResultCodeKey)), Value(SQLITE_IOERR_WRITE));
}

} // namespace
} // namespace norvane
