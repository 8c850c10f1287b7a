#include "SyncRun.h"

#include "Output.h"

#include <norvane/platform/Platform.h>
#include <norvane/sdk/NVMEnvelopesManager.h>
#include <norvane/store/CacheNotifications.h>
#include <norvane/store/EnvelopeSummary.h>
#include <norvane/store/NVMEnvelopeSynchronizer.h>

#include <map>
#include <set>

namespace norvane::cli {

namespace {

bool isPending(const EnvelopeSummary& envelope) {
    return envelope.syncPending && envelope.transactionId && envelope.status != "created";
}

std::vector<EnvelopeSummary> envelopesToSync(const std::string& id) {
    std::vector<EnvelopeSummary> chosen;
    for (EnvelopeSummary& envelope : NVMEnvelopesManager::cachedEnvelopeSummaries())
        if (isPending(envelope) && (id.empty() || envelope.envelopeId == id || envelope.transactionId == id))
            chosen.push_back(std::move(envelope));
    return chosen;
}

/// What the synchroniser said of each envelope, by transaction id.
struct Told {
    std::set<std::string> succeeded;
    std::set<std::string> failed;
};

Told syncAndListen(const std::vector<EnvelopeSummary>& envelopes, bool onlyOne) {
    Told told;
    Progress progress("uploading", envelopes.size());
    const auto into = [&progress](std::set<std::string>& ids) {
        return [&progress, &ids](const Notification& notification) {
            const auto id = notification.userInfo.find(NVMTransactionIdKey);
            if (id != notification.userInfo.end()) ids.insert(id->second.stringValue().value_or(""));
            progress.advance({});
        };
    };
    const auto& centre = Platform::current().notifications;
    const auto succeeded =
        centre->addObserver("NVMEnvelopeSyncingSucceededNotification", into(told.succeeded));
    const auto failed = centre->addObserver("NVMEnvelopeSyncingFailedNotification", into(told.failed));
    NVMEnvelopesManager manager;
    if (onlyOne)
        manager.syncEnvelopeWithId(envelopes.front().envelopeId.value_or(""));
    else
        manager.syncEnvelopes();
    NVMEnvelopeSynchronizer::sharedSynchronizer()->waitUntilIdle();
    return told;
}

std::string reasonOf(const EnvelopeSummary& kept, const Told& told) {
    if (!told.failed.contains(*kept.transactionId)) return "not sent";
    return kept.syncFailureReason.value_or("the failure could not be noted on this device");
}

} // namespace

SyncOutcome runSync(const std::string& id) {
    SyncOutcome outcome;
    const std::vector<EnvelopeSummary> started = envelopesToSync(id);
    const Told told = started.empty() ? Told() : syncAndListen(started, !id.empty());
    std::map<std::string, EnvelopeSummary> left;
    for (EnvelopeSummary& envelope : NVMEnvelopesManager::cachedEnvelopeSummaries()) {
        if (isPending(envelope)) ++outcome.pending;
        if (envelope.transactionId) left.emplace(*envelope.transactionId, std::move(envelope));
    }
    for (const EnvelopeSummary& envelope : started) {
        const std::string& transactionId = *envelope.transactionId;
        const auto kept = left.find(transactionId);
        // Also when the uploaded one could not be removed yet: the next run does that, and sends nothing.
        if (kept == left.end() || told.succeeded.contains(transactionId))
            outcome.succeeded.push_back(transactionId);
        else
            outcome.failed.emplace_back(transactionId, reasonOf(kept->second, told));
    }
    if (!id.empty() && started.empty())
        outcome.failed.emplace_back(id, "this envelope does not wait for upload");
    return outcome;
}

} // namespace norvane::cli
