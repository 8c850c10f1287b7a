#include "src/store/EnvelopeRun.h"
#include "src/store/Notify.h"
#include "src/store/StoreErrorOf.h"
#include "src/store/UploadLock.h"

#include <norvane/platform/Alerts.h>
#include <norvane/platform/Platform.h>
#include <norvane/sdk/Configuration.h>
#include <norvane/sdk/NVMAPIErrorResponse.h>
#include <norvane/store/CacheNotifications.h>
#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/NVMEnvelopeQueuer.h>
#include <norvane/store/ObjectStore.h>

#include <algorithm>
#include <array>
#include <future>

// The part of the synchroniser that uploads one envelope.

namespace norvane {

namespace {

/// Codes of the service after which trying again would change nothing.
constexpr std::array<std::string_view, 4> kFinalCodes = {
    "OFFLINE_SIGNING_NOT_ALLOWED", "RECIPIENT_UPDATE_FAILED", "INVALID_CLIENTUSERID", "SUCCESS"};

std::string serviceCodeOf(const NVMError& error) {
    const auto body = error.userInfo.find(kServiceResponseObjectKey);
    if (body != error.userInfo.end())
        if (const auto* code = body->second["errorCode"].asString()) return *code;
    return NVMAPIErrorResponseCode(error).value_or("");
}

bool isFinal(const NVMError& error) {
    return std::find(kFinalCodes.begin(), kFinalCodes.end(), serviceCodeOf(error)) != kFinalCodes.end();
}

NVMError neverAnswered() { return storeError(StoreError::NotOpen, "The upload ended without an answer."); }

/// Blocks until the attempt has its outcome.
Failure uploadAndWait(const std::shared_ptr<NVMCDEnvelopeDefinition>& envelope,
                      const std::shared_ptr<ObjectStore>& store,
                      const std::shared_ptr<EnvelopeUploader>& uploader) {
    auto promise = std::make_shared<std::promise<Failure>>();
    auto outcome = promise->get_future();
    NVMEnvelopeQueuer::syncRemoteEnvelope(
        envelope, store, uploader,
        [promise = std::move(promise)](Failure error) { promise->set_value(std::move(error)); });
    try {
        return outcome.get();
    } catch (const std::future_error&) {
        return neverAnswered(); // an uploader that went away
    }
}

bool waitsForUpload(const NVMCDEnvelopeDefinition& envelope) {
    return envelope.syncPending.value_or(0) != 0 && envelope.status != "created";
}

} // namespace

void NVMEnvelopeSynchronizer::syncEnvelope(EnvelopeRun& run) {
    // An operation that became free while a cancel went through the queue.
    if (run.cancellationsAtStart != cancellations()) return;
    const auto store = ObjectStore::defaultStore();
    if (!store) return failed(run, storeNotOpen());
    const auto uploading = lockUploads(*store);
    if (!uploading) return failed(run, uploading.error());
    const auto loaded = store->defaultContext().objectWithID<NVMCDEnvelopeDefinition>(run.id);
    if (!loaded) return failed(run, loaded.error());
    const auto& envelope = *loaded;
    run.isGone = !envelope || !waitsForUpload(*envelope);
    if (run.isGone) return;
    if (auto error = uploadAndWait(envelope, store, uploader_)) {
        if (isFinal(*error)) giveUp(run, *envelope, *error);
        return failed(run, *std::move(error));
    }
    run.userInfo = NVMRecordCacher::userInfoForRecord(envelope.get(), run.recordId);
    updateLocalStorageWithSyncedEnvelope(run);
}

void NVMEnvelopeSynchronizer::updateLocalStorageWithSyncedEnvelope(const EnvelopeRun& run) {
    postNotification(NVMEnvelopeSyncingWillDeleteEnvelopeNotification, run.userInfo);
    // Not reported, deliberately: the service has the envelope, and the next run finishes the removal.
    static_cast<void>(envelopeCacher_->disableCachingForRecordWithID(run.recordId));
}

void NVMEnvelopeSynchronizer::failed(EnvelopeRun& run, NVMError error) {
    run.error = std::move(error);
    if (!configuredValueForSetupKey(NVM_SETUP_OFFLINE_SIGNING_HIDE_ALERTS_KEY))
        Platform::current().alerts->showError(run.error->localizedDescription());
}

void NVMEnvelopeSynchronizer::giveUp(const EnvelopeRun& run, const NVMCDEnvelopeDefinition& envelope,
                                     const NVMError& error) {
    auto stored = std::make_shared<NVMCDEnvelopeDefinition>(envelope);
    stored->syncPending = 0;
    stored->syncPendingUploadRetryCount = 0;
    stored->syncFailureReason = error.localizedDescription();
    if (const auto store = ObjectStore::defaultStore()) {
        // When this cannot be written the envelope stays in line, and gets the same answer the next time.
        static_cast<void>(store->saveAndWait([&](ManagedObjectContext& context) -> Failure {
            context.updateAttributes(stored,
                                     {"syncPending", "syncPendingUploadRetryCount", "syncFailureReason"});
            return std::nullopt;
        }));
    }
    // Its own advance operation is cancelled with the rest of the run.
    postNotification(NVMEnvelopeSyncingFailedNotification, run.userInfo);
    cancelSync();
}

} // namespace norvane
