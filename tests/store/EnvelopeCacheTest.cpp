#include "tests/store/EnvelopeFixture.h"

#include <norvane/store/NVMCDCacheMetaData.h>
#include <norvane/store/NVMEnvelopeCachingPolicy.h>
#include <norvane/store/NVMEnvelopeQueuer.h>
#include <norvane/store/NVMRecordCacher.h>

#include <fstream>

namespace norvane {
namespace {

using Handler = NVMEnvelopesHandler;

class EnvelopeCacheTest : public EnvelopeFixture {
  protected:
    Failure finish(NVMEnvelopeDefinition& envelope) {
        return result([&](auto completion) { Handler::finishEnvelope(envelope, std::move(completion)); });
    }
    static void spoil(const std::string& path) {
        std::fstream file(*NVM_documentsPathByAppendingPathComponent(path), std::ios::in | std::ios::out);
        file.put('#');
    }
};

TEST_F(EnvelopeCacheTest, CachingPutsAnEnvelopeInLineAndTellsAfterwards) {
    NotificationLog log;
    bool wasSaved = false;
    const auto observer = platform().notifications->addObserver(
        std::string(NVMEnvelopeCachedNotification),
        [&](const Notification&) { wasSaved = Handler::cachedEnvelopeIds().size() == 1; });
    auto given = envelope("");
    const auto id = cached(given);
    EXPECT_TRUE(wasSaved);
    EXPECT_EQ(log.names(), (std::vector<std::string>{std::string(NVMRecordMetaDataDidAddNotification),
                                                     std::string(NVMEnvelopeCachedNotification)}));
    EXPECT_EQ(log.first(NVMEnvelopeCachedNotification),
              (Dictionary{{"envelopeId", id}, {"templateId", "template-1"}}));
    EXPECT_EQ(log.first(NVMRecordMetaDataDidAddNotification), (Dictionary{{"cacheURI", id}}));
    const auto row = stored(id);
    ASSERT_TRUE(row);
    EXPECT_TRUE(isUuidString(id));
    EXPECT_EQ(row->transactionId, id);
    EXPECT_EQ(row->status, "completed") << "no local signer is missing";
    EXPECT_EQ(row->syncPending, 1);
    EXPECT_EQ(row->syncPendingUploadRetryCount, 0);
    EXPECT_EQ(row->sentDateTime, row->lastModifiedDateTime);
    EXPECT_TRUE(NVMRecordCacher::sharedRecordCacher()->hasCachedRecordFromLocalStorageForId(id));
}

TEST_F(EnvelopeCacheTest, AnEnvelopeThatIsStillToBeSignedHereIsStoredButNotInLine) {
    NVMCDEnvelopeDefinition row;
    row.hasIncompleteLocalSigners = 1;
    row.transactionId = "earlier";
    NVMEnvelopeQueuer::makeRemoteEnvelope(row, "sent");
    EXPECT_NE(row.transactionId, "earlier");
    EXPECT_EQ(row.envelopeId, row.transactionId);
    EXPECT_EQ(row.status, "sent");
    EXPECT_FALSE(row.syncPending);
}

TEST_F(EnvelopeCacheTest, DocumentsBecomeFilesOfTheEnvelopesOwn) {
    const auto id = cached(envelope());
    const auto document = stored(id)->documents->front();
    ASSERT_TRUE(document->sandboxFilePath);
    EXPECT_EQ(document->sandboxFilePath->rfind("/userId/ed/", 0), 0u);
    EXPECT_EQ(document->filePath, document->sandboxFilePath);
    EXPECT_EQ(document->_sha256, sha256Hex("%PDF one"));
    EXPECT_EQ(NVM_dataWithPath(*document->sandboxFilePath)->view(), "%PDF one");
    EXPECT_EQ(one("SELECT count(*) FROM nv_file"), "0");

    auto sharing = envelope();
    sharing.documents->front()->pdf.reset();
    sharing.documents->front()->sandboxFilePath = document->sandboxFilePath;
    const auto other = stored(cached(sharing))->documents->front();
    EXPECT_NE(other->sandboxFilePath, document->sandboxFilePath);
    EXPECT_EQ(other->_sha256, document->_sha256);
    Handler::removeCachedEnvelopeWithId(id);
    EXPECT_FALSE(NVM_dataWithPath(*document->sandboxFilePath));
    EXPECT_EQ(NVM_dataWithPath(*other->sandboxFilePath)->view(), "%PDF one");
}

TEST_F(EnvelopeCacheTest, ADocumentThatChangedOnDiskIsRefused) {
    const auto document = stored(cached(envelope()))->documents->front();
    EXPECT_EQ(NVM_verifyDocumentWithPath(*document->sandboxFilePath, document->_sha256, "one"), std::nullopt);
    spoil(*document->sandboxFilePath);
    const auto error = NVM_verifyDocumentWithPath(*document->sandboxFilePath, document->_sha256, "one");
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, static_cast<std::int64_t>(StoreError::DocumentDamaged));
    EXPECT_EQ(error->userInfo.at(std::string(kStoreDocumentKey)), Value("one"));
    EXPECT_FALSE(NVM_verifiedDataWithPath(*document->sandboxFilePath, document->_sha256, "one").ok());
}

TEST_F(EnvelopeCacheTest, WhatCannotBeCachedLeavesNothingBehind) {
    NotificationLog log;
    auto broken = envelope();
    broken.documents->push_back(document("2", ""));
    broken.documents->back()->sandboxFilePath = "/userId/ed/gone.pdf";
    const auto error =
        result([&](auto completion) { Handler::cacheEnvelope(broken, std::move(completion)); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, static_cast<std::int64_t>(StoreError::DocumentDamaged));
    EXPECT_TRUE(rowCounts().empty());
    EXPECT_TRUE(filesIn("ed").empty());
    EXPECT_EQ(*log.first(NVMEnvelopeCacheFailedNotification).at("error").asObject<NVMError>(), *error);
    EXPECT_EQ(log.count(NVMEnvelopeCachedNotification), 0u);
}

TEST_F(EnvelopeCacheTest, FinishingASigningReplacesTheEarlierCopyInOneSave) {
    const auto earlier = cached(envelope());
    auto finished = *Handler::cachedEnvelopeById(earlier);
    finished.emailSubject = "Signed";
    NotificationLog log;
    bool sawBoth = false;
    const auto observer = platform().notifications->addObserver(
        {}, [&](const Notification&) { sawBoth = sawBoth || Handler::cachedEnvelopeIds().size() != 1; });
    ASSERT_EQ(finish(finished), std::nullopt);
    EXPECT_FALSE(sawBoth) << "neither none nor two at any time";
    EXPECT_EQ(log.names(), (std::vector<std::string>{std::string(NVMEnvelopeUncachedNotification),
                                                     std::string(NVMRecordMetaDataDidAddNotification),
                                                     std::string(NVMEnvelopeCachedNotification)}));
    EXPECT_EQ(log.first(NVMEnvelopeUncachedNotification),
              (Dictionary{{"envelopeId", earlier}, {"templateId", "template-1"}}));
    ASSERT_TRUE(finished.transactionId);
    EXPECT_NE(finished.transactionId, earlier);
    const auto row = stored(*finished.transactionId);
    ASSERT_TRUE(row);
    EXPECT_EQ(row->emailSubject, "Signed");
    EXPECT_EQ(NVM_dataWithPath(*row->documents->front()->sandboxFilePath)->view(), "%PDF one");
    EXPECT_EQ(filesIn("ed").size(), 1u);
    EXPECT_EQ(one("SELECT count(*) FROM NVMCDCacheMetaData"), "1");
}

TEST_F(EnvelopeCacheTest, FinishingKeepsTheTransactionThatMayHaveReachedTheService) {
    const auto earlier = cached(envelope());
    query("INSERT INTO nv_uploadAttempt VALUES ('" + earlier + "', 0, 'unknown', NULL)");
    auto finished = *Handler::cachedEnvelopeById(earlier);
    ASSERT_EQ(finish(finished), std::nullopt);
    EXPECT_EQ(finished.transactionId, earlier);
    EXPECT_EQ(query("SELECT transactionId FROM nv_uploadAttempt"), std::vector<std::string>{earlier});
    EXPECT_EQ(Handler::cachedEnvelopeIds(), std::vector<std::string>{earlier});
}

TEST_F(EnvelopeCacheTest, UpdatingKeepsThePlaceInLine) {
    const auto id = cached(envelope());
    Handler::updateCachedEnvelopeWithId(id, "no network");
    auto changed = envelope();
    changed.envelopeId = id;
    changed.emailSubject = "Another subject";
    changed.transactionId = "another";
    changed.envelopeTemplateDefinition->templateId = "another";
    changed.recipients->addRecipient(signer("2"));
    NotificationLog log;
    ASSERT_EQ(result([&](auto completion) { Handler::updateCachedEnvelope(changed, std::move(completion)); }),
              std::nullopt);
    EXPECT_EQ(log.names(), std::vector<std::string>{std::string(NVMEnvelopeCachedNotification)});
    EXPECT_EQ(log.first(NVMEnvelopeCachedNotification),
              (Dictionary{{"envelopeId", id}, {"templateId", "template-1"}}));
    const auto row = stored(id);
    EXPECT_EQ(row->emailSubject, "Another subject");
    EXPECT_EQ(row->recipients->signers->size(), 2u);
    EXPECT_EQ(row->transactionId, id);
    EXPECT_EQ(row->templateId, "template-1");
    EXPECT_EQ(row->syncPending, 1);
    EXPECT_EQ(row->syncFailureReason, "no network");
    EXPECT_EQ(row->pendingSyncRetriesCount(), 1);
    EXPECT_EQ(filesIn("ed").size(), 1u) << "the earlier bytes' file is gone";
    changed.envelopeId = "unknown";
    const auto error =
        result([&](auto completion) { Handler::updateCachedEnvelope(changed, std::move(completion)); });
    EXPECT_EQ(error->code, static_cast<std::int64_t>(StoreError::NotFound));
}

TEST_F(EnvelopeCacheTest, DraftsAreToldFromEnvelopes) {
    const auto sent = cached(envelope());
    const auto draft = cached(envelope("created"));
    EXPECT_EQ(Handler::cachedEnvelopeIds(), std::vector<std::string>{sent});
    ASSERT_EQ(Handler::cachedDraftEnvelopes().size(), 1u);
    EXPECT_FALSE(Handler::cachedDraftEnvelopes().front()->documents);
    EXPECT_EQ(Handler::cachedDraftEnvelopesWithDocuments().front()->documents->front()->pdf->view(),
              "%PDF one");
    EXPECT_EQ(Handler::cachedDraftEnvelopeCount(), 1u);
    EXPECT_EQ(Handler::cachedEnvelopeSummaries().size(), 2u);
    NotificationLog log;
    Handler::removeCachedEnvelopes();
    EXPECT_EQ(log.count(NVMEnvelopeUncachedNotification), 1u) << "of the one that is no draft";
    EXPECT_EQ(log.first(NVMEnvelopeUncachedNotification), (Dictionary{{"envelopeId", sent}}));
    EXPECT_EQ(rowCounts(), (std::map<std::string, std::string>{{"NVMCDCacheMetaData", "2"}}))
        << "that they were kept once stays on record";
    EXPECT_TRUE(filesIn("ed").empty());
}

TEST_F(EnvelopeCacheTest, RemovingTellsTheTemplateAndMayKeepTheDocuments) {
    const auto first = cached(envelope()), second = cached(envelope());
    NotificationLog log;
    bool wasThere = true;
    const auto observer = platform().notifications->addObserver(
        std::string(NVMEnvelopeUncachedNotification),
        [&](const Notification&) { wasThere = stored(first) != nullptr; });
    Handler::removeCachedEnvelopeWithId(first, true);
    EXPECT_FALSE(wasThere);
    EXPECT_EQ(filesIn("ed").size(), 2u);
    EXPECT_EQ(log.first(NVMEnvelopeUncachedNotification),
              (Dictionary{{"envelopeId", first}, {"templateId", "template-1"}}));
    Handler::removeCachedEnvelopeWithId(second);
    EXPECT_EQ(filesIn("ed").size(), 1u);
    Handler::removeCachedEnvelopeWithId(second);
    EXPECT_EQ(log.count(NVMEnvelopeUncachedNotification), 2u) << "nothing was there to remove";
}

TEST_F(EnvelopeCacheTest, AnEnvelopeWithoutStatusIsNoDraft) {
    const auto id = cached(envelope());
    const auto row = stored(id);
    row->status.reset();
    context().updateAttributes(row, {"status"});
    ASSERT_EQ(context().save(), std::nullopt);
    EXPECT_EQ(Handler::cachedEnvelopeIds(), std::vector<std::string>{id});
    EXPECT_EQ(Handler::cachedEnvelopes().size(), 1u);
    EXPECT_EQ(Handler::cachedDraftEnvelopeCount(), 0u);
}

TEST_F(EnvelopeCacheTest, ADamagedEnvelopeHidesNoOther) {
    log_->expect("left out of a list");
    const auto damaged = cached(envelope()), sound = cached(envelope());
    damage("UPDATE NVMCDTab SET value = 'forged' WHERE _id = (SELECT min(_id) FROM NVMCDTab)");
    ASSERT_EQ(Handler::cachedEnvelopes().size(), 1u);
    EXPECT_EQ(Handler::cachedEnvelopes().front()->envelopeId, sound);
    log_->expect("look-up");
    EXPECT_FALSE(Handler::cachedEnvelopeById(damaged));
    Handler::removeCachedEnvelopeWithId(damaged);
    EXPECT_EQ(Handler::cachedEnvelopeIds(), std::vector<std::string>{sound});
    EXPECT_EQ(filesIn("ed").size(), 1u);
}

TEST_F(EnvelopeCacheTest, RecordsAreFoundByEitherIdentifierIgnoringCase) {
    const auto id = cached(envelope());
    const auto row = stored(id);
    row->envelopeId = "FROM-THE-SERVICE";
    context().updateAttributes(row, {"envelopeId"});
    ASSERT_EQ(context().save(), std::nullopt);
    const auto find = [](std::string text) {
        std::transform(text.begin(), text.end(), text.begin(),
                       [](unsigned char c) { return std::tolower(c); });
        return NVMEnvelopeCachingPolicy::cachedRecordFromLocalStorageForId(text);
    };
    EXPECT_TRUE(find("from-the-service"));
    EXPECT_TRUE(find(id));
    for (const char* pattern : {"%", "FROM-THE-SERVIC_", "*", ""})
        EXPECT_FALSE(find(pattern)) << pattern;
    EXPECT_FALSE(Handler::findEnvelopeWithId("from-the-service", context())) << "finders compare literally";
}

TEST_F(EnvelopeCacheTest, WhatADeadWriterLeftIsClearedAtTheNextSetUp) {
    const auto kept = cached(envelope());
    ASSERT_EQ(NVM_encryptedWriteToFile(Data("%PDF unsaved"), NVM_envelopeDocumentSubPath(), "ed"),
              std::nullopt);
    std::ofstream(NVM_getUserDirectoryPathWithFolder("ed") + "/.norvane-0123456789abcdef.tmp") << "half";
    EXPECT_EQ(filesIn("ed").size(), 3u);
    openStore();
    EXPECT_EQ(filesIn("ed").size(), 3u) << "this session still lives";
    reopenStore();
    EXPECT_EQ(filesIn("ed").size(), 1u);
    EXPECT_EQ(one("SELECT count(*) FROM nv_file"), "0");
    EXPECT_EQ(NVM_dataWithPath(*stored(kept)->documents->front()->sandboxFilePath)->view(), "%PDF one");
}

TEST_F(EnvelopeCacheTest, PathsStayInsideTheDocumentsFolder) {
    for (const char* path :
         {"/userId/../secret", "/etc/passwd", "", "/", "/userId/ed/../../../x", "/other/ed/x.pdf"})
        EXPECT_FALSE(NVM_documentsPathByAppendingPathComponent(path)) << path;
    EXPECT_EQ(NVM_thumbnailPathForDocumentId("../../x"),
              NVM_getUserDirectoryPathWithFolder("thumbnails") + "/.._.._x_thumb.png");
}

} // namespace
} // namespace norvane
