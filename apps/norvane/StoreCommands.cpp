#include "Commands.h"

#include <norvane/store/StoreInspection.h>

#include <CLI/CLI.hpp>

namespace norvane::cli {

namespace {

void check(Context& context) {
    if (context.failed(setUpKit())) return;
    const auto findings = checkStore();
    if (!findings) {
        context.failed(findings.error());
        return;
    }
    Array document;
    std::vector<std::string> lines;
    for (const StoreFinding& finding : *findings) {
        document.push_back(Dictionary{
            {"kind", finding.kind}, {"subject", finding.subject}, {"description", finding.description}});
        lines.push_back(finding.kind + ": " + finding.subject + ": " + finding.description);
    }
    if (findings->empty()) lines.emplace_back("The store and its files are sound.");
    context.output().result(Dictionary{{"sound", findings->empty()}, {"findings", std::move(document)}},
                            lines);
    if (!findings->empty()) context.exit = Exit::KitError;
}

Value number(std::uintmax_t value) { return static_cast<std::int64_t>(value); }

Dictionary counts(const std::vector<std::pair<std::string, std::size_t>>& pairs) {
    Dictionary document;
    for (const auto& [name, count] : pairs)
        document.emplace(name, number(count));
    return document;
}

void statistics(Context& context) {
    if (context.failed(setUpKit())) return;
    const auto statistics = storeStatistics();
    if (!statistics) {
        context.failed(statistics.error());
        return;
    }
    const std::vector<std::pair<std::string, std::uintmax_t>> numbers = {
        {"modelVersion", static_cast<std::uintmax_t>(statistics->modelVersion)},
        {"envelopes", statistics->envelopes},
        {"drafts", statistics->drafts},
        {"waitingForUpload", statistics->waitingForUpload},
        {"templates", statistics->templates},
        {"documents", statistics->documents},
        {"documentBytes", statistics->documentBytes},
        {"storeBytes", statistics->storeBytes},
        {"journalBytes", statistics->journalBytes}};
    Dictionary document{{"envelopesByStatus", counts(statistics->envelopesByStatus)},
                        {"rows", counts(statistics->rows)}};
    std::vector<std::string> lines;
    for (const auto& [name, value] : numbers) {
        document.emplace(name, number(value));
        lines.push_back(name + ": " + std::to_string(value));
    }
    for (const auto& [status, count] : statistics->envelopesByStatus)
        lines.push_back("envelopes " + (status.empty() ? "without status" : "\"" + status + "\"") + ": " +
                        std::to_string(count));
    for (const auto& [entity, count] : statistics->rows)
        lines.push_back(entity + ": " + std::to_string(count));
    context.output().result(document, lines);
}

} // namespace

void addStoreCommands(CLI::App& program, Context& context) {
    auto* store = program.add_subcommand("store", "The store on this device; nobody needs to be signed in");
    store->require_subcommand(1);
    store
        ->add_subcommand("check",
                         "Verifies store and files against each other; exit 1 when something is found")
        ->callback([&context] { check(context); });
    store->add_subcommand("stats", "Counts what it holds")->callback([&context] { statistics(context); });
}

} // namespace norvane::cli
