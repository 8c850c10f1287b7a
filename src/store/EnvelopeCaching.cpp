#include "src/store/EnvelopeDocuments.h"
#include "src/store/EnvelopeRemoval.h"
#include "src/store/Notify.h"
#include "src/store/StoreErrorOf.h"
#include "src/store/StoredEnvelope.h"
#include "src/store/UploadAttempts.h"

#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/model/mapping/EnvelopeMapping.h>
#include <norvane/platform/Platform.h>
#include <norvane/store/CacheNotifications.h>
#include <norvane/store/NVMEnvelopeQueuer.h>
#include <norvane/store/NVMEnvelopesHandler.h>
#include <norvane/store/NVMRecordCacher.h>

// The part of the envelope handler that stores whole envelopes.

namespace norvane {

namespace {

using Envelope = std::shared_ptr<NVMCDEnvelopeDefinition>;

field::Number boxed(bool value) { return value ? 1.0 : 0.0; }

std::optional<std::string> templateIdOf(const NVMEnvelopeDefinition& envelope) {
    return envelope.envelopeTemplateDefinition ? envelope.envelopeTemplateDefinition->templateId
                                               : std::nullopt;
}

/// A save under way: what it works on, and what is told when it has ended.
struct EnvelopeSave {
    EnvelopeSave(const NVMEnvelopeDefinition& envelope, const std::shared_ptr<ObjectStore>& store,
                 NVMEnvelopesHandler::Completion whenDone)
        : domain(envelope, true)
        , documents(*store)
        , completion(std::move(whenDone))
        , transactionId(envelope.transactionId)
        , templateId(templateIdOf(envelope)) {}

    const NVMEnvelopeDefinition domain; ///< a copy: the host may go on with its own
    EnvelopeDocuments documents;
    const NVMEnvelopesHandler::Completion completion;
    std::optional<std::string> transactionId;
    std::optional<std::string> templateId;
    Envelope earlier; ///< that the envelope replaces, if any

    void ended(const Failure& error) {
        error ? documents.discard() : documents.keep();
        // The transaction identifier stands under "envelopeId", deliberately.
        postNotification(error ? NVMEnvelopeCacheFailedNotification : NVMEnvelopeCachedNotification,
                         cacheUserInfo(transactionId, templateId, error));
        if (completion) completion(error);
    }
};

/// A new stored envelope under the save's transaction identifier.
Failure insertEnvelope(EnvelopeSave& save, ManagedObjectContext& context) {
    auto stored = std::make_shared<NVMCDEnvelopeDefinition>();
    nvm_mapToNVMCDEnvelope(save.domain, *stored);
    stored->hasIncompleteLocalSigners = boxed(!save.domain.incompleteLocalSigners().empty());
    stored->setIsCreatedFromTemplate(save.domain.isCreatedFromTemplate());
    stored->setIsRemoteEnvelopeSignedByAtLeastOneSignerInCurrentSession(
        save.domain.isRemoteEnvelopeSignedByAtLeastOneSignerInCurrentSession());
    stored->status = stored->status.value_or("").empty() ? "sent" : *stored->status;
    stored->envelopeId.reset();
    NVMEnvelopeQueuer::convertToPendingEnvelope(*stored, *save.transactionId);
    save.templateId = stored->templateId;
    const std::int64_t ownerRow = save.earlier ? save.earlier->objectID.row : 0;
    if (auto error = save.documents.prepare(save.domain, *stored, ownerRow)) return error;
    if (auto error = NVMRecordCacher::sharedRecordCacher()->enableCachingForRecordWithID(
            stored->envelopeId.value_or(""), context))
        return error;
    context.insert(std::move(stored));
    return std::nullopt;
}

/// Takes the earlier copy out; its files stay as far as the finished envelope names them.
void replaceEarlier(EnvelopeSave& save, ManagedObjectContext& context) {
    removeEnvelope(context, save.earlier->objectID, false);
    forgetCaching(context, save.earlier->envelopeId);
    forgetCaching(context, save.earlier->transactionId);
    if (save.earlier->transactionId != save.transactionId) forgetUpload(context, save.earlier->transactionId);
    // Ahead of the commit that takes it out, deliberately: hosts count on this order.
    postNotification(NVMEnvelopeUncachedNotification,
                     cacheUserInfo(save.domain.envelopeId, save.earlier->templateId));
}

Failure updateEnvelope(EnvelopeSave& save, ManagedObjectContext& context) {
    const auto found = storedEnvelope(save.domain.envelopeId.value_or(""), context);
    if (!found) return found.error();
    const Envelope& stored = *found;
    if (!stored) return storeError(StoreError::NotFound, "The envelope is not stored.");
    const auto before = EnvelopeDocuments::paths(*stored);
    const auto transactionId = stored->transactionId;
    const auto templateId = stored->templateId;
    const auto retries = stored->syncPendingUploadRetryCount;
    const auto reason = stored->syncFailureReason;
    nvm_mapToNVMCDEnvelope(save.domain, *stored);
    // Whose envelope it is and how far its upload is belong to the store, not to the host's copy, which may
    // be old.
    stored->transactionId = transactionId;
    if (templateId) stored->templateId = templateId;
    stored->syncPendingUploadRetryCount = retries;
    stored->syncFailureReason = reason;
    save.transactionId = transactionId;
    save.templateId = stored->templateId;
    if (auto error = save.documents.prepare(save.domain, *stored, stored->objectID.row)) return error;
    context.update(stored);
    for (const auto& path : before)
        context.dropFile(path); // those that are still named stay
    return std::nullopt;
}

/// Runs the save on the store's queue, or ends it at once, on the main queue, when there is no store.
void start(const NVMEnvelopeDefinition& envelope, NVMEnvelopesHandler::Completion completion,
           const std::function<Failure(EnvelopeSave&, const std::shared_ptr<ObjectStore>&)>& begin,
           Failure (*write)(EnvelopeSave&, ManagedObjectContext&)) {
    const auto store = ObjectStore::defaultStore();
    Failure error;
    if (!store) error = storeNotOpen();
    std::shared_ptr<EnvelopeSave> save;
    if (store) {
        save = std::make_shared<EnvelopeSave>(envelope, store, completion);
        error = begin(*save, store);
    }
    if (!error) {
        store->saveInBackground(
            [save, write](ManagedObjectContext& context) { return write(*save, context); },
            [save](const Failure& saved) { save->ended(saved); });
        return;
    }
    Platform::current().executors->mainQueue()->async(
        [error, completion = std::move(completion),
         userInfo = cacheUserInfo(envelope.transactionId, templateIdOf(envelope), error)] {
            postNotification(NVMEnvelopeCacheFailedNotification, userInfo);
            if (completion) completion(error);
        });
}

/// An earlier copy that the service may have already keeps its transaction identifier: that is how it would
/// tell.
Result<std::string> transactionIdFor(const Envelope& earlier, ObjectStore& store) {
    if (earlier && earlier->transactionId) {
        const auto attempt = UploadAttempts(store).find(*earlier->transactionId);
        if (!attempt) return attempt.error();
        if (*attempt) return *earlier->transactionId;
    }
    return Platform::current().random->uuidString();
}

} // namespace

void NVMEnvelopesHandler::cacheEnvelope(const NVMEnvelopeDefinition& envelope, Completion completion) {
    const auto begin = [](EnvelopeSave& save, const std::shared_ptr<ObjectStore>&) -> Failure {
        save.transactionId = Platform::current().random->uuidString();
        return std::nullopt;
    };
    start(envelope, std::move(completion), begin, &insertEnvelope);
}

void NVMEnvelopesHandler::updateCachedEnvelope(const NVMEnvelopeDefinition& envelope, Completion completion) {
    const auto begin = [](EnvelopeSave&, const std::shared_ptr<ObjectStore>&) -> Failure {
        return std::nullopt;
    };
    start(envelope, std::move(completion), begin, &updateEnvelope);
}

void NVMEnvelopesHandler::finishEnvelope(NVMEnvelopeDefinition& envelope, Completion completion) {
    const auto begin = [&](EnvelopeSave& save, const std::shared_ptr<ObjectStore>& store) -> Failure {
        if (envelope.envelopeId)
            save.earlier = findEnvelopeWithId(*envelope.envelopeId, store->defaultContext());
        const auto transactionId = transactionIdFor(save.earlier, *store);
        if (!transactionId) return transactionId.error();
        save.transactionId = *transactionId;
        envelope.transactionId = *transactionId;
        return std::nullopt;
    };
    start(envelope, std::move(completion), begin,
          [](EnvelopeSave& save, ManagedObjectContext& context) -> Failure {
              if (save.earlier) replaceEarlier(save, context);
              return insertEnvelope(save, context);
          });
}

} // namespace norvane
