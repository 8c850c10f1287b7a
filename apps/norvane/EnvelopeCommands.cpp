#include "Commands.h"
#include "EnvelopeRecordCommands.h"
#include "SyncRun.h"

#include <norvane/platform/DateFormat.h>
#include <norvane/sdk/NVMEnvelopesManager.h>
#include <norvane/store/EnvelopeSummary.h>

#include <CLI/CLI.hpp>

#include <algorithm>

namespace norvane::cli {

namespace {

Dictionary describe(const EnvelopeSummary& envelope) {
    return {{"envelopeId", envelope.envelopeId},
            {"transactionId", envelope.transactionId},
            {"status", envelope.status},
            {"syncPending", envelope.syncPending},
            {"syncPendingUploadRetryCount", envelope.syncPendingUploadRetryCount},
            {"syncFailureReason", envelope.syncFailureReason},
            {"emailSubject", envelope.emailSubject}};
}

std::string line(const EnvelopeSummary& envelope) {
    std::string text = envelope.envelopeId.value_or("-") + "  " + envelope.status.value_or("-") +
                       (envelope.syncPending ? "  waits for upload" : "");
    if (envelope.emailSubject) text += "  " + *envelope.emailSubject;
    if (envelope.syncFailureReason) text += "  (last failure: " + *envelope.syncFailureReason + ")";
    return text;
}

void list(Context& context) {
    if (context.failed(openKit())) return;
    ListOutput output(context.output());
    const auto error = NVMEnvelopesManager::eachCachedEnvelopeSummary([&](const EnvelopeSummary& envelope) {
        output.add(context.options.json ? Value(describe(envelope)) : Value(), line(envelope));
        return true;
    });
    output.end();
    if (error) context.exit = Exit::KitError;
    if (error) Output(false).error(*error); // standard output has its document already
}

std::optional<EnvelopeSummary> find(const std::string& id) {
    for (EnvelopeSummary& envelope : NVMEnvelopesManager::cachedEnvelopeSummaries())
        if (envelope.envelopeId == id || envelope.transactionId == id) return std::move(envelope);
    return std::nullopt;
}

NVMError notRemoved(const std::string& id) {
    return NVMError::make("norvane.command", 0, "The envelope " + id + " could not be removed.",
                          "ENVELOPE_NOT_REMOVED");
}

void remove(Context& context, const std::string& id, bool all, bool force) {
    if (context.failed(openKit())) return;
    NVMEnvelopesManager manager;
    std::vector<EnvelopeSummary> chosen = NVMEnvelopesManager::cachedEnvelopeSummaries();
    if (!all) {
        auto envelope = find(id);
        if (!envelope) {
            context.failed(envelopeNotFound(id));
            return;
        }
        chosen = {std::move(*envelope)};
    }
    const bool waits =
        std::any_of(chosen.begin(), chosen.end(), [](const auto& envelope) { return envelope.syncPending; });
    if (waits && !force) {
        context.failed(
            NVMError::make("norvane.command", 0,
                           "Signed envelopes that wait for upload would be lost. Run \"norvane sync\" "
                           "first, or remove them with --force.",
                           "ENVELOPES_WAIT_FOR_UPLOAD"));
        return;
    }
    if (all)
        manager.removeCachedEnvelopes();
    else
        manager.removeCachedEnvelopeWithId(chosen.front().envelopeId.value_or(""));
    Array removed;
    std::vector<std::string> lines;
    for (const EnvelopeSummary& envelope : chosen) {
        const std::string gone = envelope.envelopeId.value_or("");
        // Removals do not say whether they succeeded.
        if (find(gone)) {
            context.failed(notRemoved(gone));
            return;
        }
        removed.push_back(envelope.envelopeId);
        lines.push_back("removed " + gone);
    }
    context.output().result(Dictionary{{"removed", std::move(removed)}}, lines);
}

void sync(Context& context, const std::string& id) {
    if (context.failed(openKit())) return;
    if (!id.empty() && !find(id)) {
        context.failed(envelopeNotFound(id));
        return;
    }
    const SyncOutcome outcome = runSync(id);
    Array succeeded(outcome.succeeded.begin(), outcome.succeeded.end());
    Array failed;
    std::vector<std::string> lines;
    for (const std::string& done : outcome.succeeded)
        lines.push_back("uploaded " + done);
    for (const auto& [failedId, reason] : outcome.failed) {
        failed.push_back(Dictionary{{"id", failedId}, {"error", reason}});
        lines.emplace_back("failed ").append(failedId).append(": ").append(reason);
    }
    lines.push_back(std::to_string(outcome.pending) + " envelope(s) wait for upload");
    context.output().result(Dictionary{{"succeeded", std::move(succeeded)},
                                       {"failed", std::move(failed)},
                                       {"pending", static_cast<std::int64_t>(outcome.pending)}},
                            lines);
    if (!outcome.failed.empty()) context.exit = Exit::KitError;
}

} // namespace

void addEnvelopeCommands(CLI::App& program, Context& context) {
    auto* envelopes = program.add_subcommand("envelopes", "The envelopes kept on this device");
    envelopes->require_subcommand(1);
    envelopes->add_subcommand("list", "All of them")->callback([&context] { list(context); });

    struct Arguments {
        std::string id;
        bool all = false;
        bool force = false;
    };
    addEnvelopeRecordCommands(*envelopes, context);

    auto removed = std::make_shared<Arguments>();
    auto* removeCommand = envelopes->add_subcommand("remove", "Removes envelopes with their files");
    removeCommand->add_option("ID", removed->id, "Envelope or transaction id");
    removeCommand->add_flag("--all", removed->all, "All of them, drafts too");
    removeCommand->add_flag("--force", removed->force, "Also those that wait for upload: they are lost");
    removeCommand->callback([&context, removed] {
        if (removed->id.empty() == !removed->all) throw CLI::RequiredError("ID or --all, one of the two,");
        remove(context, removed->id, removed->all, removed->force);
    });

    auto syncId = std::make_shared<std::string>();
    auto* syncCommand = program.add_subcommand("sync", "Uploads what waits for upload");
    syncCommand->add_option("ID", *syncId, "Only this envelope");
    syncCommand->callback([&context, syncId] { sync(context, *syncId); });
}

} // namespace norvane::cli
