#pragma once

#include <norvane/platform/Executors.h>
#include <norvane/platform/Result.h>
#include <norvane/platform/Value.h>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace norvane {

class ManagedObjectContext;
class NVMEnvelopeCachingPolicy;
struct NVMCDEnvelopeDefinition;

/// What a record cacher asks to upload.
class RecordSynchronizing {
  public:
    virtual ~RecordSynchronizing() = default;
    virtual void cacheNecessaryRecords() = 0;
};

/// Keeps book of the records that are kept on the device, and tells of changes of their status. Any thread
/// may call.
class NVMRecordCacher : public std::enable_shared_from_this<NVMRecordCacher> {
  public:
    static std::shared_ptr<NVMRecordCacher> sharedRecordCacher(); ///< made once
    static std::shared_ptr<NVMRecordCacher> recordCacher();       ///< a fresh one
    NVMRecordCacher(std::set<std::string> currentlyCachingRecordIds,
                    std::shared_ptr<NVMEnvelopeCachingPolicy> cachingDelegate);

    std::weak_ptr<RecordSynchronizing> synchronizerDelegate; ///< set before the cacher is shared
    const std::shared_ptr<NVMEnvelopeCachingPolicy>& cachingDelegate() const { return cachingDelegate_; }

    /// Posts NVMRecordMetaDataDidAddNotification; the row is saved with the context.
    Failure enableCachingForRecordWithID(const std::string& recordId, ManagedObjectContext& context);
    /// Removes the bookkeeping, the envelope and its files in one save, then posts
    /// NVMEnvelopeStatusDidChangeNotification with NVMCacheDidRemoveStatus. A record that is gone is no
    /// error.
    Failure disableCachingForRecordWithID(const std::string& recordId);
    bool isCachingEnabledForRecordWithID(const std::string& recordId) const;
    /// Caching is enabled and the record is there.
    bool hasCachedRecordFromLocalStorageForId(const std::string& recordId) const;

    std::vector<std::string> recordURISThatNeedCaching() const;
    /// An operation for each of them. In this kit there are none.
    std::vector<std::shared_ptr<Operation>> cachingBlocks();
    void cacheNecessaryRecords(); ///< asks the synchroniser
    void finishCachingRecordWithId(const std::string& recordId);
    void uncacheUnnecessaryRecords() {}                             ///< does nothing, deliberately
    std::vector<Dictionary> uncachedMetadata() const { return {}; } ///< always none, deliberately

    std::set<std::string> currentlyCachingRecordIds() const;

    /// "cacheURI", "templateId" and "transactionId" beside the envelope's own user information, and
    /// "cacheStatus" unless that is empty. The envelope may be null.
    static Dictionary userInfoForRecord(const NVMCDEnvelopeDefinition* envelope, const std::string& recordId,
                                        std::string_view cacheStatus = {});

  private:
    void cacheRecord(const std::string& recordId);
    void postStatus(const std::string& recordId, std::string_view status) const;

    const std::shared_ptr<NVMEnvelopeCachingPolicy> cachingDelegate_;
    mutable std::mutex mutex_; ///< guards `currentlyCachingRecordIds_`
    std::set<std::string> currentlyCachingRecordIds_;
};

} // namespace norvane
