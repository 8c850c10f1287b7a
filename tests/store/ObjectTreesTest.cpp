#include "tests/store/RandomTree.h"
#include "tests/store/StoreFixture.h"

#include <norvane/platform/NVMException.h>
#include <norvane/store/NVMCDEnvelopes.h>
#include <norvane/store/NVMCDTemplates.h>
#include <norvane/store/NVMCoreDataUtilities.h>
#include <norvane/store/StoreErrors.h>

namespace norvane {
namespace {

using Match = FetchRequest::Match;

class ObjectTreesTest : public StoreFixture {
  protected:
    template <class T>
    static std::shared_ptr<T> saved(std::shared_ptr<T> object) {
        context().insert(object);
        const auto error = context().save();
        EXPECT_EQ(error, std::nullopt) << error->localizedDescription();
        return object;
    }
    template <class T>
    static std::shared_ptr<T> reloaded(const T& object) {
        auto loaded = context().objectWithID<T>(object.objectID);
        EXPECT_TRUE(loaded.ok());
        return loaded.ok() ? *loaded : nullptr;
    }
    static std::shared_ptr<NVMCDEnvelopeDefinition> envelope(const std::string& id) {
        auto made = std::make_shared<NVMCDEnvelopeDefinition>();
        made->envelopeId = id;
        return made;
    }
};

TEST_F(ObjectTreesTest, ReadsBackWhateverItWasGiven) {
    for (unsigned seed = 1; seed <= 12; ++seed) {
        const auto envelope = saved(RandomTree(seed).make<NVMCDEnvelopeDefinition>());
        const auto loaded = reloaded(*envelope);
        ASSERT_TRUE(loaded);
        EXPECT_TRUE(equalRecords(NVMCDEnvelopeDefinition::type(), envelope.get(), loaded.get())) << seed;
        const auto made = saved(RandomTree(seed).make<NVMCDEnvelopeTemplate>());
        const auto loadedTemplate = reloaded(*made);
        ASSERT_TRUE(loadedTemplate);
        EXPECT_TRUE(equalRecords(NVMCDEnvelopeTemplate::type(), made.get(), loadedTemplate.get())) << seed;
    }
}

TEST_F(ObjectTreesTest, AnUpdateMakesTheStoredTreeLikeTheObject) {
    const auto neighbour = saved(RandomTree(99).make<NVMCDEnvelopeDefinition>());
    for (unsigned seed = 20; seed < 30; ++seed) {
        const auto first = saved(RandomTree(seed).make<NVMCDEnvelopeDefinition>());
        auto changed = reloaded(*first);
        RandomTree(seed + 100).fill(NVMCDEnvelopeDefinition::type(), changed.get());
        // Some parts of the earlier tree stay, in other places, among new ones.
        if (first->documents && changed->documents) changed->documents->push_back(first->documents->front());
        if (first->recipients && first->recipients->signers) {
            changed->recipients = first->recipients;
            std::reverse(changed->recipients->signers->begin(), changed->recipients->signers->end());
        }
        context().update(changed);
        ASSERT_EQ(context().save(), std::nullopt);
        const auto loaded = reloaded(*first);
        ASSERT_TRUE(loaded);
        EXPECT_TRUE(equalRecords(NVMCDEnvelopeDefinition::type(), changed.get(), loaded.get())) << seed;
        EXPECT_TRUE(query("PRAGMA foreign_key_check").empty());
    }
    EXPECT_TRUE(equalRecords(NVMCDEnvelopeDefinition::type(), neighbour.get(), reloaded(*neighbour).get()));
}

TEST_F(ObjectTreesTest, RemovingAnEnvelopeLeavesNoRowOfIt) {
    const auto kept = saved(RandomTree(7).make<NVMCDEnvelopeDefinition>());
    const auto before = rowCounts();
    const auto removed = saved(RandomTree(8).make<NVMCDEnvelopeDefinition>());
    EXPECT_NE(rowCounts(), before);
    context().remove(removed->objectID);
    ASSERT_EQ(context().save(), std::nullopt);
    EXPECT_EQ(rowCounts(), before);
    context().removeAll(NVMCDEnvelopeDefinition::type());
    ASSERT_EQ(context().save(), std::nullopt);
    EXPECT_TRUE(rowCounts().empty());
    EXPECT_EQ(reloaded(*kept), nullptr);
}

TEST_F(ObjectTreesTest, NeverGivesAnEnvelopesIdentifierTwice) {
    const auto first = saved(envelope("1"));
    context().remove(first->objectID);
    ASSERT_EQ(context().save(), std::nullopt);
    EXPECT_NE(saved(envelope("2"))->objectID, first->objectID);
}

TEST_F(ObjectTreesTest, AFailedSaveChangesNothingAndGivesNoIdentifiers) {
    const auto gone = saved(envelope("gone"));
    context().remove(gone->objectID);
    ASSERT_EQ(context().save(), std::nullopt);
    const auto added = RandomTree(3).make<NVMCDEnvelopeDefinition>();
    context().insert(added);
    context().update(gone);
    const auto error = context().save();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, static_cast<std::int64_t>(StoreError::ObjectGone));
    EXPECT_FALSE(added->objectID.isPermanent());
    EXPECT_TRUE(rowCounts().empty());
    EXPECT_EQ(context().save(), std::nullopt) << "the changes are forgotten";
}

TEST_F(ObjectTreesTest, WritesChosenAttributesAlone) {
    const auto stored = saved(envelope("1"));
    auto stale = reloaded(*stored);
    stored->emailSubject = "newer";
    context().update(stored);
    ASSERT_EQ(context().save(), std::nullopt);
    stale->saveSyncFailueReason("no network");
    stale->saveSyncFailueReason("no network");
    context().updateAttributes(stale, {"syncPending", "syncFailureReason", "syncPendingUploadRetryCount"});
    ASSERT_EQ(context().save(), std::nullopt);
    const auto now = reloaded(*stored);
    EXPECT_EQ(now->emailSubject, "newer");
    EXPECT_EQ(now->syncFailureReason, "no network");
    EXPECT_EQ(now->pendingSyncRetriesCount(), 2);
    EXPECT_EQ(now->syncPending, 1);
}

TEST_F(ObjectTreesTest, FindsByBoundConditions) {
    const std::string hostile = "x' OR '1' = '1";
    auto draft = envelope(hostile);
    draft->status = "created";
    auto upper = envelope("ABC-DEF");
    upper->status = "sent";
    for (const auto& each : {draft, upper, envelope(""), std::make_shared<NVMCDEnvelopeDefinition>()})
        saved(each);
    const auto all = NVMCDEnvelopeDefinition::fetchRequest();
    const auto found = [](FetchRequest request) { return *context().count(request); };
    EXPECT_EQ(found(all), 4u);
    EXPECT_EQ(found(FetchRequest(all).where("envelopeId", Match::Equal, hostile)), 1u);
    EXPECT_EQ(found(FetchRequest(all).where("envelopeId", Match::EqualIgnoringCase, "abc-def")), 1u);
    EXPECT_EQ(found(FetchRequest(all).where("envelopeId", Match::Equal, "abc-def")), 0u);
    EXPECT_EQ(found(FetchRequest(all).where("envelopeId", Match::NotEmpty)), 2u);
    EXPECT_EQ(found(FetchRequest(all).where("envelopeId", Match::Equal, {})), 1u);
    EXPECT_EQ(found(FetchRequest(all).where("status", Match::NotEqual, "created")), 3u);
    const auto last =
        context().fetchProperties(FetchRequest(all).orderBy("envelopeId", false).limitTo(1), {"envelopeId"});
    ASSERT_TRUE(last.ok());
    EXPECT_EQ(last->front().front(), Value(hostile));
    EXPECT_THROW(static_cast<void>(context().count(FetchRequest(all).where("noSuchColumn", Match::Equal, 1))),
                 NVMException);
}

TEST_F(ObjectTreesTest, IdentifiersTravelAndLoadWhatIsStored) {
    const auto first = saved(envelope("1"));
    const auto second = saved(envelope("2"));
    auto ids = NVMCoreDataUtilities::managedObjectIDsForManagedObjects<NVMCDEnvelopeDefinition>(
        {first, second, std::make_shared<NVMCDEnvelopeDefinition>()});
    EXPECT_EQ(ids.size(), 2u);
    context().remove(second->objectID);
    ASSERT_EQ(context().save(), std::nullopt);
    const auto objects =
        NVMCoreDataUtilities::managedObjectsForManagedObjectIDs<NVMCDEnvelopeDefinition>(ids);
    ASSERT_EQ(objects.size(), 1u);
    EXPECT_EQ(objects.front()->envelopeId, "1");
}

TEST_F(ObjectTreesTest, RemovedTextsCannotBeReadFromTheFiles) {
    const std::string secret = "the-very-secret-subject-line";
    auto made = envelope("1");
    made->emailSubject = secret;
    saved(made);
    context().remove(made->objectID);
    ASSERT_EQ(context().save(), std::nullopt);
    store()->scrub();
    for (const char* suffix : {"", "-wal"}) {
        const auto bytes = platform().files->read(storeFile().string() + suffix);
        EXPECT_TRUE(!bytes.ok() || bytes->view().find(secret) == std::string_view::npos) << suffix;
    }
}

} // namespace
} // namespace norvane
