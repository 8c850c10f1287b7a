#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/NVMCDEnvelopes.h>
#include <norvane/store/NVMEnvelopeCachingPolicy.h>
#include <norvane/store/ObjectStore.h>

namespace norvane {

namespace {

using Match = FetchRequest::Match;

std::shared_ptr<NVMCDEnvelopeDefinition> firstWith(std::string_view column, const std::string& recordId,
                                                   const ManagedObjectContext& context) {
    auto found = context.fetchFirst<NVMCDEnvelopeDefinition>(
        NVMCDEnvelopeDefinition::fetchRequest().where(column, Match::EqualIgnoringCase, recordId));
    return found ? std::move(found).value() : nullptr;
}

} // namespace

std::shared_ptr<NVMEnvelopeCachingPolicy> NVMEnvelopeCachingPolicy::envelopeCaching() {
    auto policy = std::make_shared<NVMEnvelopeCachingPolicy>(std::string(kEnvelopeCachingIdentifier));
    policy->listenForEnvelopeChanges();
    return policy;
}

NVMEnvelopeCachingPolicy::NVMEnvelopeCachingPolicy(std::string cachingIdentifier)
    : cachingIdentifier_(std::move(cachingIdentifier)) {}

FetchRequest NVMEnvelopeCachingPolicy::fetchRequestForCachedRecordsWithContext(const ManagedObjectContext&) {
    return NVMCDEnvelopeDefinition::fetchRequest().where("envelopeId", Match::NotEmpty);
}

std::vector<std::shared_ptr<NVMCDEnvelopeDefinition>>
NVMEnvelopeCachingPolicy::cachedRecordsFromLocalStorageWithPredicate(const FetchRequest& predicate) const {
    const auto store = ObjectStore::defaultStore();
    if (!store) return {};
    auto request = fetchRequestForCachedRecordsWithContext(store->defaultContext());
    for (const auto& condition : predicate.conditions())
        request.where(condition.column, condition.match, condition.value);
    auto found = store->defaultContext().fetch<NVMCDEnvelopeDefinition>(request);
    return found ? std::move(found).value() : std::vector<std::shared_ptr<NVMCDEnvelopeDefinition>>{};
}

std::shared_ptr<NVMCDEnvelopeDefinition>
NVMEnvelopeCachingPolicy::cachedRecordFromLocalStorageForId(const std::string& recordId) {
    const auto store = ObjectStore::defaultStore();
    if (!store || recordId.empty()) return nullptr;
    if (auto envelope = firstWith("envelopeId", recordId, store->defaultContext())) return envelope;
    return firstWith("transactionId", recordId, store->defaultContext());
}

void NVMEnvelopeCachingPolicy::cacheRecordForID(const std::string&, std::function<void(Failure)>) {}

void NVMEnvelopeCachingPolicy::listenForEnvelopeChanges() {
    const auto store = ObjectStore::defaultStore();
    if (!store) return;
    auto request = fetchRequestForCachedRecordsWithContext(store->defaultContext());
    auto found = store->defaultContext().fetchIDs(request.orderBy("statusChangedDateTime"));
    if (found) envelopeFetchedResults_ = std::move(found).value();
}

} // namespace norvane
