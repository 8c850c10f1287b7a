#include "SyncRun.h"

#include "Output.h"

#include <norvane/platform/Platform.h>
#include <norvane/sdk/NVMEnvelopesManager.h>
#include <norvane/store/EnvelopeSummary.h>
#include <norvane/store/NVMEnvelopeSynchronizer.h>

#include <algorithm>
#include <map>

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

} // namespace

SyncOutcome runSync(const std::string& id) {
    SyncOutcome outcome;
    const std::vector<EnvelopeSummary> started = envelopesToSync(id);
    if (!started.empty()) {
        Progress progress("uploading", started.size());
        const auto& centre = Platform::current().notifications;
        const auto advance = [&progress](const Notification&) { progress.advance({}); };
        const auto succeeded = centre->addObserver("NVMEnvelopeSyncingSucceededNotification", advance);
        const auto failed = centre->addObserver("NVMEnvelopeSyncingFailedNotification", advance);
        NVMEnvelopesManager manager;
        if (id.empty())
            manager.syncEnvelopes();
        else
            manager.syncEnvelopeWithId(started.front().envelopeId.value_or(""));
        NVMEnvelopeSynchronizer::sharedSynchronizer()->waitUntilIdle();
    }
    std::map<std::string, EnvelopeSummary> left;
    for (EnvelopeSummary& envelope : NVMEnvelopesManager::cachedEnvelopeSummaries()) {
        if (isPending(envelope)) ++outcome.pending;
        if (envelope.transactionId) left.emplace(*envelope.transactionId, std::move(envelope));
    }
    for (const EnvelopeSummary& envelope : started) {
        const std::string& transactionId = *envelope.transactionId;
        const auto kept = left.find(transactionId);
        if (kept == left.end())
            outcome.succeeded.push_back(transactionId);
        else
            outcome.failed.emplace_back(transactionId, kept->second.syncFailureReason.value_or("not sent"));
    }
    return outcome;
}

} // namespace norvane::cli
