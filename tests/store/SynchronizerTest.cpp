#include "tests/store/EnvelopeFixture.h"
#include "tests/store/FakeEnvelopeUploader.h"

#include <norvane/sdk/Configuration.h>
#include <norvane/store/NVMEnvelopeSynchronizer.h>

#include <fstream>

namespace norvane {
namespace {

using Outcome = FakeEnvelopeUploader::Outcome;

class SynchronizerTest : public EnvelopeFixture {
  protected:
    void SetUp() override {
        EnvelopeFixture::SetUp();
        synchronizer_ =
            NVMEnvelopeSynchronizer::withEnvelopeCacher(NVMRecordCacher::recordCacher(), service_);
    }
    void TearDown() override {
        synchronizer_.reset();
        EnvelopeFixture::TearDown();
    }
    void sync() {
        synchronizer_->sync();
        synchronizer_->waitUntilIdle();
    }
    static std::vector<std::string> names(const NotificationLog& log) {
        std::vector<std::string> names;
        for (auto name : log.names()) {
            for (const std::string_view word : {"NVMEnvelope", "Notification"})
                if (const auto at = name.find(word); at != std::string::npos) name.erase(at, word.size());
            names.push_back(name);
        }
        return names;
    }

    std::shared_ptr<FakeEnvelopeUploader> service_ = std::make_shared<FakeEnvelopeUploader>();
    std::shared_ptr<NVMEnvelopeSynchronizer> synchronizer_;
};

TEST_F(SynchronizerTest, UploadsAllInOrderAndLeavesNothingBehind) {
    std::vector<std::string> ids;
    for (int i = 0; i < 3; ++i)
        ids.push_back(cached(envelope()));
    std::vector<std::size_t> counts;
    service_->duringUpload = [&] { counts.push_back(synchronizer_->currentSyncCount()); };
    NotificationLog log;
    sync();
    EXPECT_EQ(service_->taken(), ids);
    EXPECT_EQ(counts, (std::vector<std::size_t>{1, 2, 3}));
    EXPECT_TRUE(rowCounts().empty());
    EXPECT_TRUE(filesIn("ed").empty());
    EXPECT_EQ(names(log),
              (std::vector<std::string>{"SyncingStarted", "SyncingWillDeleteEnvelope", "StatusDidChange",
                                        "SyncingSucceeded", "SyncingWillDeleteEnvelope", "StatusDidChange",
                                        "SyncingSucceeded", "SyncingWillDeleteEnvelope", "StatusDidChange",
                                        "SyncingSucceeded", "SyncingEnded"}));
    const auto started = log.first(NVMEnvelopeSyncingStartedNotification);
    ASSERT_EQ(started.size(), 3u);
    EXPECT_EQ(started.at(ids[0])["templateId"], Value("template-1"));
    const Dictionary record{{"envelopeId", "service-" + ids[0]},
                            {"cacheURI", ids[0]},
                            {"templateId", "template-1"},
                            {"transactionId", ids[0]}};
    EXPECT_EQ(log.first(NVMEnvelopeSyncingWillDeleteEnvelopeNotification), record);
    EXPECT_EQ(log.first(NVMEnvelopeSyncingSucceededNotification), record);
    auto removed = record;
    removed["cacheStatus"] = "NVMCacheDidRemoveStatus";
    EXPECT_EQ(log.first(NVMEnvelopeStatusDidChangeNotification), removed);
    EXPECT_FALSE(synchronizer_->syncing());
}

TEST_F(SynchronizerTest, SendsWhatIsStored) {
    std::shared_ptr<NVESEnvelopeDefinition> sent;
    struct Spy final : EnvelopeUploader {
        std::shared_ptr<NVESEnvelopeDefinition>& sent;
        explicit Spy(std::shared_ptr<NVESEnvelopeDefinition>& to)
            : sent(to) {}
        void upload(std::shared_ptr<NVESEnvelopeDefinition> envelope, Completion completion) override {
            sent = std::move(envelope);
            completion({"id", std::nullopt, true});
        }
        void lookUp(const std::vector<std::string>&, LookupCompletion) override {}
    };
    const auto id = cached(envelope());
    const auto synchronizer = NVMEnvelopeSynchronizer::withEnvelopeCacher(NVMRecordCacher::recordCacher(),
                                                                          std::make_shared<Spy>(sent));
    synchronizer->sync();
    synchronizer->waitUntilIdle();
    ASSERT_TRUE(sent);
    EXPECT_EQ(sent->transactionId, id);
    EXPECT_EQ(sent->status, "sent");
    EXPECT_EQ(sent->emailSubject, "Please sign");
    EXPECT_TRUE(sent->documents->front()->fileSandboxURL.text);
}

TEST_F(SynchronizerTest, AFailureIsRecordedAndTheNextEnvelopeIsTried) {
    const auto first = cached(envelope()), second = cached(envelope());
    service_->outcomes = {Outcome::NotReached};
    NotificationLog log;
    sync();
    EXPECT_EQ(service_->taken(), std::vector<std::string>{second});
    const auto row = stored(first);
    ASSERT_TRUE(row);
    EXPECT_EQ(row->syncFailureReason, "no network");
    EXPECT_EQ(row->pendingSyncRetriesCount(), 1);
    EXPECT_EQ(row->syncPending, 1);
    EXPECT_EQ(log.first(NVMEnvelopeSyncingFailedNotification).at("envelopeId"), Value(first));
    EXPECT_EQ(log.count(NVMEnvelopeSyncingEndedNotification), 0u) << "one still waits";
    EXPECT_EQ(alerts_->errors(), std::vector<std::string>{"no network"});
    nvm_setDefaults(Value("true"), NVM_SETUP_OFFLINE_SIGNING_HIDE_ALERTS_KEY);
    service_->outcomes = {Outcome::NotReached};
    sync();
    EXPECT_EQ(alerts_->errors().size(), 1u);
    sync();
    EXPECT_EQ(service_->lookUps(), 0) << "the service surely had it not";
    EXPECT_TRUE(rowCounts().empty());
}

TEST_F(SynchronizerTest, AnAnswerThatIsFinalEndsTheRun) {
    for (const char* code :
         {"OFFLINE_SIGNING_NOT_ALLOWED", "RECIPIENT_UPDATE_FAILED", "INVALID_CLIENTUSERID", "SUCCESS"}) {
        const auto first = cached(envelope()), second = cached(envelope());
        service_->refusalCode = code;
        service_->outcomes = {Outcome::Refused};
        NotificationLog log;
        sync();
        ASSERT_EQ(NVMEnvelopesHandler::cachedEnvelopeIds(), (std::vector<std::string>{first, second}))
            << code;
        EXPECT_EQ(stored(first)->syncPending, 0) << code;
        EXPECT_EQ(stored(first)->pendingSyncRetriesCount(), 0);
        EXPECT_EQ(stored(second)->syncPending, 1);
        EXPECT_TRUE(service_->taken().empty());
        EXPECT_EQ(log.count(NVMEnvelopeSyncingEndedNotification), 1u);
        EXPECT_EQ(log.count(NVMEnvelopeSyncingFailedNotification), 1u);
        EXPECT_EQ(synchronizer_->totalSyncCount(), 0u);
        NVMEnvelopesHandler::removeCachedEnvelopes();
    }
}

TEST_F(SynchronizerTest, NothingIsSentAgainThatMayHaveArrived) {
    for (const auto lost : {Outcome::AcceptedButAnswerLost, Outcome::AnswerWithoutId, Outcome::Unanswered}) {
        const auto before = service_->taken().size();
        const auto id = cached(envelope());
        service_->outcomes = {lost};
        const int lookUps = service_->lookUps();
        sync();
        ASSERT_TRUE(stored(id)) << "kept until the service has said that it has it";
        EXPECT_EQ(service_->lookUps(), lookUps) << "asked in a later run, not at once";
        EXPECT_EQ(one("SELECT outcome FROM nv_uploadAttempt"), "unknown");
        service_->lookUpFails = true;
        const int uploads = service_->uploads();
        sync();
        EXPECT_EQ(service_->uploads(), uploads) << "an outcome that cannot be found out sends nothing";
        service_->lookUpFails = false;
        sync();
        EXPECT_EQ(service_->taken().size(), before + 1);
        EXPECT_EQ(service_->taken().back(), id) << "under the same transaction identifier";
        EXPECT_TRUE(rowCounts().empty());
        EXPECT_TRUE(filesIn("ed").empty());
    }
}

TEST_F(SynchronizerTest, AnAcceptedEnvelopeWhoseRemovalWasCutShortIsOnlyRemoved) {
    const auto id = cached(envelope());
    query("INSERT INTO nv_uploadAttempt VALUES ('" + id + "', 0, 'accepted', 'service-id')");
    NotificationLog log;
    sync();
    EXPECT_EQ(service_->uploads(), 0);
    EXPECT_EQ(service_->lookUps(), 0);
    EXPECT_EQ(log.first(NVMEnvelopeSyncingSucceededNotification).at("envelopeId"), Value("service-id"));
    EXPECT_TRUE(rowCounts().empty());
}

TEST_F(SynchronizerTest, LeavesDraftsAndOthersThatDoNotWait) {
    cached(envelope("created"));
    const auto idle = stored(cached(envelope()));
    idle->syncPending = 0;
    context().updateAttributes(idle, {"syncPending"});
    ASSERT_EQ(context().save(), std::nullopt);
    EXPECT_EQ(synchronizer_->pendingEnvelopeCount(), 0u);
    sync();
    EXPECT_EQ(service_->uploads(), 0);
}

TEST_F(SynchronizerTest, ADamagedDocumentIsNeverSent) {
    const auto id = cached(envelope());
    const auto path = *stored(id)->documents->front()->sandboxFilePath;
    std::ofstream(*NVM_documentsPathByAppendingPathComponent(path), std::ios::app) << "x";
    sync();
    EXPECT_EQ(service_->uploads(), 0);
    EXPECT_NE(stored(id)->syncFailureReason->find("document 1"), std::string::npos);
    EXPECT_EQ(one("SELECT count(*) FROM nv_uploadAttempt"), "0");
}

TEST_F(SynchronizerTest, AnEnvelopeThatCannotBeReadFailsAndTheNextIsTried) {
    cached(envelope());
    const auto second = cached(envelope());
    damage("UPDATE NVMCDTab SET value = 'forged' WHERE _id = (SELECT min(_id) FROM NVMCDTab)");
    NotificationLog log;
    sync();
    EXPECT_EQ(service_->taken(), std::vector<std::string>{second});
    EXPECT_EQ(log.count(NVMEnvelopeSyncingFailedNotification), 1u);
    EXPECT_EQ(log.first(NVMEnvelopeSyncingStartedNotification).size(), 2u);
    EXPECT_EQ(alerts_->errors().size(), 1u) << "says why";
    EXPECT_EQ(synchronizer_->pendingEnvelopeCount(), 1u) << "it stays";
}

TEST_F(SynchronizerTest, OneRunAtATime) {
    cached(envelope());
    NotificationLog log;
    Event uploading, mayEnd;
    service_->duringUpload = [&] {
        uploading.set();
        EXPECT_TRUE(mayEnd.wait());
    };
    synchronizer_->sync();
    ASSERT_TRUE(uploading.wait());
    EXPECT_TRUE(synchronizer_->syncing());
    const auto late = cached(envelope());
    synchronizer_->sync();
    mayEnd.set();
    synchronizer_->waitUntilIdle();
    EXPECT_EQ(log.count(NVMEnvelopeSyncingStartedNotification), 1u);
    EXPECT_EQ(NVMEnvelopesHandler::cachedEnvelopeIds(), std::vector<std::string>{late});
}

TEST_F(SynchronizerTest, OneEnvelopeCanBeChosen) {
    const auto first = cached(envelope()), second = cached(envelope());
    synchronizer_->syncWithEnvelopeObjectID(stored(second)->objectID);
    synchronizer_->waitUntilIdle();
    EXPECT_EQ(service_->taken(), std::vector<std::string>{second});
    NotificationLog log;
    synchronizer_->syncWithEnvelopeObjectID({NVMCDEnvelopeDefinition::type().name(), 12345});
    const auto failed = log.first(NVMEnvelopeSyncingFailedNotification);
    EXPECT_EQ(failed.at("message"), Value("No envelope found for envelopeObjectID"));
    EXPECT_EQ(failed.at("envelopeObjectID").asObject<ManagedObjectID>()->row, 12345);
    EXPECT_TRUE(stored(first));
}

TEST_F(SynchronizerTest, CancellingLetsTheUploadInFlightComplete) {
    cached(envelope());
    const auto second = cached(envelope());
    NotificationLog log;
    service_->duringUpload = [&] { synchronizer_->cancelSync(); };
    sync();
    EXPECT_EQ(log.count(NVMEnvelopeSyncingEndedNotification), 1u);
    EXPECT_FALSE(synchronizer_->syncing());
    EXPECT_EQ(NVMEnvelopesHandler::cachedEnvelopeIds(), std::vector<std::string>{second});
    service_->duringUpload = nullptr;
    sync();
    EXPECT_EQ(service_->taken().size(), 2u);
    EXPECT_TRUE(rowCounts().empty());
}

TEST_F(SynchronizerTest, AnEnvelopeRemovedBeforeItsTurnIsPassedOver) {
    cached(envelope());
    const auto second = cached(envelope());
    service_->duringUpload = [&] { NVMEnvelopesHandler::removeCachedEnvelopeWithId(second); };
    NotificationLog log;
    sync();
    EXPECT_EQ(service_->uploads(), 1);
    EXPECT_EQ(log.count(NVMEnvelopeSyncingFailedNotification), 0u);
    EXPECT_EQ(log.count(NVMEnvelopeSyncingSucceededNotification), 1u);
    EXPECT_FALSE(synchronizer_->syncing());
}

} // namespace
} // namespace norvane
