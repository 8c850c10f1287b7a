#include "src/store/EnvelopeRun.h"
#include "src/store/Notify.h"

#include <norvane/platform/Platform.h>
#include <norvane/store/CacheNotifications.h>
#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/NVMCDEnvelopes.h>
#include <norvane/store/NVMEnvelopeSynchronizer.h>
#include <norvane/store/NVMEnvelopesHandler.h>
#include <norvane/store/ObjectStore.h>

#include <algorithm>

namespace norvane {

namespace {

constexpr std::string_view kQueueName = "SDK Envelopes Syncing Queue";

FetchRequest pendingRequest() {
    return NVMCDEnvelopeDefinition::fetchRequest()
        .where("transactionId", FetchRequest::Match::NotEmpty)
        .where("syncPending", FetchRequest::Match::Equal, 1)
        .where("status", FetchRequest::Match::NotEqual, "created");
}

} // namespace

NVMEnvelopeSynchronizer::NVMEnvelopeSynchronizer(std::shared_ptr<NVMRecordCacher> envelopeCacher,
                                                 std::shared_ptr<EnvelopeUploader> uploader)
    : envelopeCacher_(std::move(envelopeCacher))
    , uploader_(std::move(uploader))
    , queue_(Platform::current().executors->makeOperationQueue(std::string(kQueueName))) {}

NVMEnvelopeSynchronizer::~NVMEnvelopeSynchronizer() = default;

std::shared_ptr<NVMEnvelopeSynchronizer> NVMEnvelopeSynchronizer::sharedSynchronizer() {
    static const auto shared = withEnvelopeCacher(NVMRecordCacher::sharedRecordCacher());
    return shared;
}

std::shared_ptr<NVMEnvelopeSynchronizer>
NVMEnvelopeSynchronizer::withEnvelopeCacher(std::shared_ptr<NVMRecordCacher> envelopeCacher,
                                            std::shared_ptr<EnvelopeUploader> uploader) {
    std::shared_ptr<NVMEnvelopeSynchronizer> synchronizer(
        new NVMEnvelopeSynchronizer(std::move(envelopeCacher), std::move(uploader)));
    synchronizer->envelopeCacher_->synchronizerDelegate = synchronizer;
    return synchronizer;
}

std::string NVMEnvelopeSynchronizer::transactionIdPreferredOverEnvelopeIdForEnvelope(
    const NVMCDEnvelopeDefinition& envelope) {
    if (envelope.transactionId && !envelope.transactionId->empty()) return *envelope.transactionId;
    return envelope.envelopeId.value_or("");
}

Dictionary NVMEnvelopeSynchronizer::userInfoWithEnvelopeIdTemplateIdTransactionIdForEnvelope(
    const NVMCDEnvelopeDefinition& envelope) {
    return {{std::string(NVMEnvelopeIdKey), envelope.envelopeId.value_or("")},
            {std::string(NVMTemplateIdKey), envelope.templateId.value_or("")},
            {std::string(NVMTransactionIdKey), envelope.transactionId.value_or("")}};
}

// What is pending.

std::vector<ManagedObjectID> NVMEnvelopeSynchronizer::pendingEnvelopeObjectIDs() const {
    const auto store = ObjectStore::defaultStore();
    if (!store) return {};
    auto ids = store->defaultContext().fetchIDs(pendingRequest());
    return ids ? std::move(ids).value() : std::vector<ManagedObjectID>{};
}

std::size_t NVMEnvelopeSynchronizer::pendingEnvelopeCount() const {
    const auto store = ObjectStore::defaultStore();
    if (!store) return 0;
    const auto count = store->defaultContext().count(pendingRequest());
    return count ? *count : 0;
}

bool NVMEnvelopeSynchronizer::syncing() const {
    const std::lock_guard lock(pending_);
    return !pendingEnvelopeObjectIDs_.empty();
}

bool NVMEnvelopeSynchronizer::caching() const { return queue_->operationCount() > 0 && !syncing(); }

std::size_t NVMEnvelopeSynchronizer::currentSyncCount() const {
    const std::lock_guard lock(pending_);
    return totalSyncCount_ + 1 - pendingEnvelopeObjectIDs_.size();
}

std::size_t NVMEnvelopeSynchronizer::totalSyncCount() const {
    const std::lock_guard lock(pending_);
    return totalSyncCount_;
}

void NVMEnvelopeSynchronizer::waitUntilIdle() { queue_->waitUntilAllOperationsAreFinished(); }

// Starting and stopping.

void NVMEnvelopeSynchronizer::sync() { syncWithPendingEnvelopeObjectIds(pendingEnvelopeObjectIDs()); }

void NVMEnvelopeSynchronizer::syncWithEnvelopeObjectID(const ManagedObjectID& envelopeObjectID) {
    const auto pending = pendingEnvelopeObjectIDs();
    if (std::find(pending.begin(), pending.end(), envelopeObjectID) != pending.end())
        return syncWithPendingEnvelopeObjectIds({envelopeObjectID});
    handleSyncFailedWithUserInfo(
        {{"envelopeObjectID", Value::object(std::make_shared<const ManagedObjectID>(envelopeObjectID))},
         {"message", "No envelope found for envelopeObjectID"}},
        std::nullopt);
}

void NVMEnvelopeSynchronizer::syncWithPendingEnvelopeObjectIds(const std::vector<ManagedObjectID>& ids) {
    const std::lock_guard lock(starting_);
    if (syncing() || caching()) return;
    const Runs runs = runsForObjectIDs(ids);
    const auto start =
        Platform::current().executors->makeOperation("start", [self = shared_from_this(), runs] {
            if (!runs.empty()) self->startSync(runs);
        });
    const auto cachings = envelopeCacher_->cachingBlocks();
    const auto pushes = pushPendingEnvelopeOperations(runs);
    if (!pushes.empty()) {
        pushes.front()->addDependency(start);
        for (const auto& caching : cachings)
            caching->addDependency(pushes.back());
    }
    std::vector<std::shared_ptr<Operation>> operations{start};
    operations.insert(operations.end(), pushes.begin(), pushes.end());
    operations.insert(operations.end(), cachings.begin(), cachings.end());
    queue_->add(operations);
}

NVMEnvelopeSynchronizer::Runs
NVMEnvelopeSynchronizer::runsForObjectIDs(const std::vector<ManagedObjectID>& ids) const {
    Runs runs;
    const auto store = ObjectStore::defaultStore();
    if (!store) return runs;
    for (const auto& id : ids) {
        const auto envelope = store->defaultContext().objectWithID<NVMCDEnvelopeDefinition>(id);
        // One that cannot be read takes its turn too, and fails with the reason.
        if (!envelope || *envelope)
            runs.push_back(std::make_shared<EnvelopeRun>(
                id, envelope ? **envelope : NVMCDEnvelopeDefinition(), cancellations()));
    }
    return runs;
}

void NVMEnvelopeSynchronizer::startSync(const Runs& runs) {
    Dictionary started;
    {
        const std::lock_guard lock(pending_);
        if (runs.front()->cancellationsAtStart != cancellations_) return;
        for (const auto& run : runs) {
            pendingEnvelopeObjectIDs_.push_back(run->id);
            started.insert_or_assign(run->startedKey(), run->startedInfo);
        }
        totalSyncCount_ = pendingEnvelopeObjectIDs_.size();
    }
    postNotification(NVMEnvelopeSyncingStartedNotification, std::move(started));
}

std::vector<std::shared_ptr<Operation>>
NVMEnvelopeSynchronizer::pushPendingEnvelopeOperations(const Runs& runs) {
    Executors& executors = *Platform::current().executors;
    std::vector<std::shared_ptr<Operation>> operations;
    for (const auto& run : runs) {
        const auto sync =
            executors.makeOperation("syncingBlockWithID: " + run->recordId,
                                    [self = shared_from_this(), run] { self->syncEnvelope(*run); });
        const auto advance =
            executors.makeOperation("NVMAdvanceOperationWithID: " + run->recordId,
                                    [self = shared_from_this(), run] { self->advance(*run); });
        advance->addDependency(sync);
        if (!operations.empty()) sync->addDependency(operations.back());
        operations.insert(operations.end(), {sync, advance});
    }
    return operations;
}

std::size_t NVMEnvelopeSynchronizer::cancellations() const {
    const std::lock_guard lock(pending_);
    return cancellations_;
}

void NVMEnvelopeSynchronizer::cancelSync() {
    {
        const std::lock_guard lock(pending_);
        ++cancellations_;
        totalSyncCount_ = 0;
        pendingEnvelopeObjectIDs_.clear();
    }
    queue_->cancelAllOperations();
    postNotification(NVMEnvelopeSyncingEndedNotification);
}

// One envelope's end.

void NVMEnvelopeSynchronizer::advance(EnvelopeRun& run) {
    if (run.cancellationsAtStart != cancellations()) return;
    advanceToNextEnvelope(run.id);
    if (run.error) {
        handleSyncFailedWithUserInfo(run.userInfo, run.error);
    } else if (!run.isGone) {
        postNotification(NVMEnvelopeSyncingSucceededNotification, run.userInfo);
    }
    if (pendingEnvelopeCount() == 0) postNotification(NVMEnvelopeSyncingEndedNotification);
}

void NVMEnvelopeSynchronizer::advanceToNextEnvelope(const ManagedObjectID& id) {
    const std::lock_guard lock(pending_);
    // A run that was cancelled meanwhile has no identifiers any more.
    std::erase(pendingEnvelopeObjectIDs_, id);
}

void NVMEnvelopeSynchronizer::handleSyncFailedWithUserInfo(const Dictionary& userInfo, const Failure& error) {
    const auto envelopeId = userInfo.find(NVMEnvelopeIdKey);
    const std::string* identifier = envelopeId == userInfo.end() ? nullptr : envelopeId->second.asString();
    if (identifier && !identifier->empty())
        NVMEnvelopesHandler::updateCachedEnvelopeWithId(*identifier,
                                                        error ? error->localizedDescription() : "");
    postNotification(NVMEnvelopeSyncingFailedNotification, userInfo);
}

} // namespace norvane
