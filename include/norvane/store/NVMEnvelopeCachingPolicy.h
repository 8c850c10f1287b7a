#pragma once

#include <norvane/platform/Result.h>
#include <norvane/store/NVMManagedObject.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace norvane {

class ManagedObjectContext;
class NVMRecordCacher;
struct NVMCDEnvelopeDefinition;

/// The kind of record under which envelopes stand in the bookkeeping.
inline constexpr std::string_view kEnvelopeCachingIdentifier = "NVMCDEnvelopeDefinition";

/// What NVMRecordCacher keeps and how its records are found: envelopes of the default store.
class NVMEnvelopeCachingPolicy {
  public:
    /// A policy of identifier "NVMCDEnvelopeDefinition" that has started listening.
    static std::shared_ptr<NVMEnvelopeCachingPolicy> envelopeCaching();
    explicit NVMEnvelopeCachingPolicy(std::string cachingIdentifier);

    const std::string& cachingIdentifier() const { return cachingIdentifier_; }
    std::weak_ptr<NVMRecordCacher> recordCacher;

    /// Stored envelopes with a non-empty `envelopeId`.
    static FetchRequest fetchRequestForCachedRecordsWithContext(const ManagedObjectContext& context);
    /// Those of them that meet the request's conditions too.
    std::vector<std::shared_ptr<NVMCDEnvelopeDefinition>>
    cachedRecordsFromLocalStorageWithPredicate(const FetchRequest& predicate) const;
    /// By `envelopeId`, else by `transactionId`, ignoring case; null when neither matches.
    static std::shared_ptr<NVMCDEnvelopeDefinition>
    cachedRecordFromLocalStorageForId(const std::string& recordId);
    /// Does nothing and never calls its completion, deliberately: nothing is downloaded in this kit.
    void cacheRecordForID(const std::string& recordId, std::function<void(Failure)> completionBlock);
    /// Fetches the cached envelopes once, by `statusChangedDateTime`.
    void listenForEnvelopeChanges();
    const std::vector<ManagedObjectID>& envelopeFetchedResults() const { return envelopeFetchedResults_; }

  private:
    std::string cachingIdentifier_;
    std::vector<ManagedObjectID> envelopeFetchedResults_; ///< set once, before the policy is handed out
};

} // namespace norvane
