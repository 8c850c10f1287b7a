#include "src/store/EnvelopeRemoval.h"
#include "src/store/Notify.h"
#include "src/store/StoreErrorOf.h"

#include <norvane/platform/Platform.h>
#include <norvane/store/CacheNotifications.h>
#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/NVMCDCacheMetaData.h>
#include <norvane/store/NVMCDEnvelopes.h>
#include <norvane/store/NVMEnvelopeCachingPolicy.h>
#include <norvane/store/NVMRecordCacher.h>
#include <norvane/store/ObjectStore.h>

namespace norvane {

NVMRecordCacher::NVMRecordCacher(std::set<std::string> currentlyCachingRecordIds,
                                 std::shared_ptr<NVMEnvelopeCachingPolicy> cachingDelegate)
    : cachingDelegate_(std::move(cachingDelegate))
    , currentlyCachingRecordIds_(std::move(currentlyCachingRecordIds)) {}

std::shared_ptr<NVMRecordCacher> NVMRecordCacher::recordCacher() {
    auto cacher = std::make_shared<NVMRecordCacher>(std::set<std::string>{},
                                                    NVMEnvelopeCachingPolicy::envelopeCaching());
    cacher->cachingDelegate()->recordCacher = cacher;
    return cacher;
}

std::shared_ptr<NVMRecordCacher> NVMRecordCacher::sharedRecordCacher() {
    static const auto shared = recordCacher();
    return shared;
}

Failure NVMRecordCacher::enableCachingForRecordWithID(const std::string& recordId,
                                                      ManagedObjectContext& context) {
    const auto row =
        NVMCDCacheMetaData::cacheMetaDataForURI(recordId, cachingDelegate_->cachingIdentifier(), context);
    if (!row) return row.error();
    postNotification(NVMRecordMetaDataDidAddNotification, (*row)->userInfo());
    return std::nullopt;
}

Failure NVMRecordCacher::disableCachingForRecordWithID(const std::string& recordId) {
    const auto store = ObjectStore::defaultStore();
    if (!store) return storeNotOpen();
    const auto envelope = NVMEnvelopeCachingPolicy::cachedRecordFromLocalStorageForId(recordId);
    const auto error = store->saveAndWait([&](ManagedObjectContext& context) -> Failure {
        forgetCaching(context, recordId);
        if (envelope) {
            removeEnvelope(context, envelope->objectID, false);
            forgetUpload(context, envelope->transactionId);
        }
        return std::nullopt;
    });
    if (error) return error;
    postNotification(NVMEnvelopeStatusDidChangeNotification,
                     userInfoForRecord(envelope.get(), recordId, NVMCacheDidRemoveStatus));
    return std::nullopt;
}

bool NVMRecordCacher::isCachingEnabledForRecordWithID(const std::string& recordId) const {
    const auto store = ObjectStore::defaultStore();
    if (!store) return false;
    const auto count = store->defaultContext().count(
        NVMCDCacheMetaData::cachePredicateForURI(recordId, cachingDelegate_->cachingIdentifier()));
    return count && *count > 0;
}

bool NVMRecordCacher::hasCachedRecordFromLocalStorageForId(const std::string& recordId) const {
    return isCachingEnabledForRecordWithID(recordId) &&
           NVMEnvelopeCachingPolicy::cachedRecordFromLocalStorageForId(recordId) != nullptr;
}

std::vector<std::string> NVMRecordCacher::recordURISThatNeedCaching() const {
    std::set<std::string> uris;
    for (const Dictionary& row : uncachedMetadata()) {
        const auto uri = row.find("uri");
        if (uri != row.end() && uri->second.asString()) uris.insert(*uri->second.asString());
    }
    return {uris.begin(), uris.end()};
}

std::vector<std::shared_ptr<Operation>> NVMRecordCacher::cachingBlocks() {
    std::vector<std::shared_ptr<Operation>> operations;
    for (const auto& recordId : recordURISThatNeedCaching()) {
        operations.push_back(Platform::current().executors->makeOperation(
            recordId, [self = shared_from_this(), recordId] { self->cacheRecord(recordId); }));
    }
    return operations;
}

void NVMRecordCacher::cacheRecord(const std::string& recordId) {
    {
        const std::lock_guard lock(mutex_);
        if (!currentlyCachingRecordIds_.insert(recordId).second) return;
    }
    const bool existed = NVMEnvelopeCachingPolicy::cachedRecordFromLocalStorageForId(recordId) != nullptr;
    cachingDelegate_->cacheRecordForID(recordId,
                                       [self = shared_from_this(), recordId, existed](Failure error) {
                                           self->finishCachingRecordWithId(recordId);
                                           self->postStatus(recordId, error     ? NVMCacheDidFailStatus
                                                                      : existed ? NVMCacheDidUpdateStatus
                                                                                : NVMCacheDidAddStatus);
                                       });
}

void NVMRecordCacher::postStatus(const std::string& recordId, std::string_view status) const {
    const auto envelope = NVMEnvelopeCachingPolicy::cachedRecordFromLocalStorageForId(recordId);
    postNotification(NVMEnvelopeStatusDidChangeNotification,
                     userInfoForRecord(envelope.get(), recordId, status));
}

void NVMRecordCacher::finishCachingRecordWithId(const std::string& recordId) {
    {
        const std::lock_guard lock(mutex_);
        currentlyCachingRecordIds_.erase(recordId);
    }
    const auto store = ObjectStore::defaultStore();
    if (!store) return;
    // The time is for information only: a save that fails changes nothing else.
    static_cast<void>(store->saveAndWait([&](ManagedObjectContext& context) -> Failure {
        auto row = NVMCDCacheMetaData::existingMetaDataForURI(recordId, cachingDelegate_->cachingIdentifier(),
                                                              context);
        if (!row) return row.error();
        if (!*row) return std::nullopt;
        (*row)->lastTimeCached = Platform::current().clock->now();
        context.update(*row);
        return std::nullopt;
    }));
}

void NVMRecordCacher::cacheNecessaryRecords() {
    if (const auto synchronizer = synchronizerDelegate.lock()) synchronizer->cacheNecessaryRecords();
}

std::set<std::string> NVMRecordCacher::currentlyCachingRecordIds() const {
    const std::lock_guard lock(mutex_);
    return currentlyCachingRecordIds_;
}

Dictionary NVMRecordCacher::userInfoForRecord(const NVMCDEnvelopeDefinition* envelope,
                                              const std::string& recordId, std::string_view cacheStatus) {
    Dictionary userInfo;
    if (envelope) userInfo = envelope->userInfo().value_or(Dictionary{});
    userInfo.insert_or_assign(std::string(NVMCacheURIKey), Value(recordId));
    if (envelope && envelope->templateId)
        userInfo.insert_or_assign(std::string(NVMTemplateIdKey), *envelope->templateId);
    if (envelope && envelope->transactionId)
        userInfo.insert_or_assign(std::string(NVMTransactionIdKey), *envelope->transactionId);
    if (!cacheStatus.empty()) userInfo.insert_or_assign(std::string(NVMCacheStatusKey), Value(cacheStatus));
    return userInfo;
}

} // namespace norvane
