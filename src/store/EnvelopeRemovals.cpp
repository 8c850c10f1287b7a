#include "src/store/EnvelopeDocuments.h"
#include "src/store/EnvelopeRemoval.h"
#include "src/store/FileJournal.h"
#include "src/store/Notify.h"
#include "src/store/StoreWork.h"

#include <norvane/store/CacheNotifications.h>
#include <norvane/store/DocumentFiles.h>
#include <norvane/store/NVMEnvelopeSynchronizer.h>
#include <norvane/store/NVMEnvelopesHandler.h>
#include <norvane/store/ObjectStore.h>

// The part of the envelope handler that removes, and that hands on to the synchroniser.

namespace norvane {

namespace {

using Match = FetchRequest::Match;

std::optional<std::string> textOf(const Value& value) {
    const auto* text = value.asString();
    return text ? std::optional(*text) : std::nullopt;
}

/// Every stored envelope's files, drafts' too.
std::vector<std::string> envelopeFiles(const ManagedObjectContext& context) {
    std::vector<std::string> paths;
    const auto rows = context.fetchProperties(
        NVMCDDocument::fetchRequest().where("envelopeDefinition", Match::NotEqual), {"sandboxFilePath"});
    if (!rows) return paths;
    for (const auto& row : *rows)
        if (const auto* path = row.front().asString()) paths.push_back(*path);
    return paths;
}

} // namespace

void NVMEnvelopesHandler::removeCachedEnvelopeWithId(const std::string& envelopeId) {
    removeCachedEnvelopeWithId(envelopeId, false);
}

void NVMEnvelopesHandler::removeCachedEnvelopeWithId(const std::string& envelopeId, bool preserveDocuments) {
    const auto store = ObjectStore::defaultStore();
    if (!store) return;
    ManagedObjectContext context(store);
    removeCachedEnvelopeWithId(envelopeId, preserveDocuments, context);
}

void NVMEnvelopesHandler::removeCachedEnvelopeWithId(const std::string& envelopeId, bool preserveDocuments,
                                                     ManagedObjectContext& context) {
    const auto request =
        NVMCDEnvelopeDefinition::fetchRequest().where("envelopeId", Match::Equal, envelopeId).limitTo(1);
    const auto ids = context.fetchIDs(request);
    const auto rows = context.fetchProperties(request, {NVMTransactionIdKey, NVMTemplateIdKey});
    if (!ids || ids->empty() || !rows || rows->empty()) return;
    removeEnvelope(context, ids->front(), preserveDocuments);
    forgetUpload(context, textOf(rows->front()[0]));
    if (context.save()) return;
    // Not before the save: whoever is told looks for what is left, and must not find this one.
    postNotification(NVMEnvelopeUncachedNotification, cacheUserInfo(envelopeId, textOf(rows->front()[1])));
}

void NVMEnvelopesHandler::removeCachedDocumentWithId(const std::string& documentId,
                                                     const std::string& envelopeId, bool withTabs) {
    const auto store = ObjectStore::defaultStore();
    if (!store) return;
    ManagedObjectContext context(store);
    const auto document = findDocumentWithId(documentId, envelopeId, context);
    if (!document) return;
    context.remove(document->objectID);
    if (document->sandboxFilePath) context.dropFile(*document->sandboxFilePath);
    if (withTabs)
        context.removeMatching(NVMCDTab::fetchRequest().where("documentId", Match::Equal, documentId));
    static_cast<void>(context.save()); // removals report no errors, deliberately
}

void NVMEnvelopesHandler::removeCachedEnvelopes() {
    const auto store = ObjectStore::defaultStore();
    if (!store) return;
    const auto ids = cachedEnvelopeIds();
    const auto error = store->saveAndWait([](ManagedObjectContext& context) -> Failure {
        for (const auto& path : envelopeFiles(context))
            context.dropFile(path);
        context.removeAll(NVMCDEnvelopeDefinition::type());
        StoreWork::join(context,
                        [](Connection& connection) { connection.run("DELETE FROM nv_uploadAttempt"); });
        return std::nullopt;
    });
    if (error) return;
    // Not the whole folder: a save that is under way elsewhere may have written its files already.
    FileJournal::removeUnknown(*store, kEnvelopeDocumentsFolder);
    NVM_deleteAllDocumentThumbnails();
    for (const auto& id : ids)
        postNotification(NVMEnvelopeUncachedNotification, cacheUserInfo(id, std::nullopt));
}

void NVMEnvelopesHandler::updateCachedEnvelopeWithId(const std::string& envelopeId,
                                                     const std::string& syncFailReason) {
    const auto store = ObjectStore::defaultStore();
    const auto envelope = store ? findEnvelopeWithId(envelopeId, store->defaultContext()) : nullptr;
    if (!envelope) return;
    envelope->saveSyncFailueReason(syncFailReason);
    // A reason that cannot be written is lost; the envelope waits for its upload either way.
    static_cast<void>(store->saveAndWait([&](ManagedObjectContext& context) -> Failure {
        context.updateAttributes(envelope, {"lastModifiedDateTime", "syncPending", "syncFailureReason",
                                            "syncPendingUploadRetryCount"});
        return std::nullopt;
    }));
}

void NVMEnvelopesHandler::saveDefaultContext() {
    if (const auto store = ObjectStore::defaultStore()) static_cast<void>(store->defaultContext().save());
}

void NVMEnvelopesHandler::syncEnvelopeWithId(const std::string& envelopeId) {
    const auto store = ObjectStore::defaultStore();
    const auto envelope = store ? findEnvelopeWithId(envelopeId, store->defaultContext()) : nullptr;
    NVMEnvelopeSynchronizer::sharedSynchronizer()->syncWithEnvelopeObjectID(
        envelope ? envelope->objectID : ManagedObjectID{NVMCDEnvelopeDefinition::type().name()});
}

void NVMEnvelopesHandler::syncEnvelopes() { NVMEnvelopeSynchronizer::sharedSynchronizer()->sync(); }

} // namespace norvane
