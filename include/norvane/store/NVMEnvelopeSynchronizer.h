#pragma once

#include <norvane/platform/Executors.h>
#include <norvane/platform/Result.h>
#include <norvane/store/EnvelopeUploader.h>
#include <norvane/store/NVMManagedObject.h>
#include <norvane/store/NVMRecordCacher.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace norvane {

struct NVMCDEnvelopeDefinition;

/// Uploads the pending envelopes of the default store, one after another: those with a transaction identifier
/// that wait for upload and are no drafts. A run ends when each envelope that it started with has its
/// outcome. An uploaded envelope leaves the store; a failed one stays for the next run, unless the service's
/// answer was final. Runs start only when asked for. Any thread may call.
///
/// An envelope keeps its transaction identifier through all attempts. An attempt is on record before it is
/// sent, and while its outcome is unknown the next run asks the service before it sends again.
class NVMEnvelopeSynchronizer : public RecordSynchronizing,
                                public std::enable_shared_from_this<NVMEnvelopeSynchronizer> {
  public:
    using Completion = std::function<void(Failure)>;

    /// Made once, with the shared record cacher, whose delegate it becomes.
    static std::shared_ptr<NVMEnvelopeSynchronizer> sharedSynchronizer();
    /// Neither copied nor shared: for tests with an uploader of their own.
    static std::shared_ptr<NVMEnvelopeSynchronizer>
    withEnvelopeCacher(std::shared_ptr<NVMRecordCacher> envelopeCacher,
                       std::shared_ptr<EnvelopeUploader> uploader = EnvelopeUploader::service());
    ~NVMEnvelopeSynchronizer() override;

    /// Uploads all pending envelopes. Does nothing while a run is active.
    void sync();
    /// Uploads one. When it is not pending, the run fails with the message "No envelope found for
    /// envelopeObjectID".
    void syncWithEnvelopeObjectID(const ManagedObjectID& envelopeObjectID);
    void cacheNecessaryRecords() override { sync(); }
    /// Ends the run at once. An upload in flight still completes.
    void cancelSync();

    bool syncing() const; ///< envelopes of the run are still to be uploaded
    bool caching() const; ///< the queue works, but not for a run
    std::size_t pendingEnvelopeCount() const;
    /// The place in the run, from 1, of the envelope being uploaded.
    std::size_t currentSyncCount() const;
    std::size_t totalSyncCount() const;
    /// Waits until the queue has nothing to do. Not from its own threads.
    void waitUntilIdle();

    /// The transaction identifier, else the envelope identifier, else empty.
    static std::string
    transactionIdPreferredOverEnvelopeIdForEnvelope(const NVMCDEnvelopeDefinition& envelope);
    static Dictionary
    userInfoWithEnvelopeIdTemplateIdTransactionIdForEnvelope(const NVMCDEnvelopeDefinition& envelope);
    std::vector<ManagedObjectID> pendingEnvelopeObjectIDs() const;

  private:
    struct EnvelopeRun;
    NVMEnvelopeSynchronizer(std::shared_ptr<NVMRecordCacher> envelopeCacher,
                            std::shared_ptr<EnvelopeUploader> uploader);

    void syncWithPendingEnvelopeObjectIds(const std::vector<ManagedObjectID>& ids);
    using Runs = std::vector<std::shared_ptr<EnvelopeRun>>;
    Runs runsForObjectIDs(const std::vector<ManagedObjectID>& ids) const;
    void startSync(const Runs& runs);
    std::vector<std::shared_ptr<Operation>> pushPendingEnvelopeOperations(const Runs& runs);
    std::size_t cancellations() const;
    void syncEnvelope(EnvelopeRun& run);
    static void failed(EnvelopeRun& run, NVMError error);
    void giveUp(const EnvelopeRun& run, const NVMCDEnvelopeDefinition& envelope, const NVMError& error);
    void updateLocalStorageWithSyncedEnvelope(const EnvelopeRun& run);
    void advance(EnvelopeRun& run);
    void advanceToNextEnvelope(const ManagedObjectID& id);
    void handleSyncFailedWithUserInfo(const Dictionary& userInfo, const Failure& error);

    const std::shared_ptr<NVMRecordCacher> envelopeCacher_;
    const std::shared_ptr<EnvelopeUploader> uploader_;
    const std::shared_ptr<OperationQueue> queue_; ///< "SDK Envelopes Syncing Queue"
    std::mutex starting_;                         ///< held while a start is decided
    mutable std::mutex pending_;                  ///< guards the three below
    std::vector<ManagedObjectID> pendingEnvelopeObjectIDs_;
    std::size_t totalSyncCount_ = 0;
    std::size_t cancellations_ = 0; ///< a start that a cancel has overtaken does not begin
};

} // namespace norvane
