#include "bench/BenchHome.h"

#include <norvane/model/NVMEnvelopeDefaults.h>
#include <norvane/model/mapping/EnvelopeJson.h>
#include <norvane/sdk/Configuration.h>

#include <benchmark/benchmark.h>

#include <map>

// Queries of an envelope of 50 recipients with 200, 2,000 and 20,000 tabs. The limit is the same query on 200
// tabs, 10 or 100 times: a ratio near 1 says that a query looks at each tab once.

namespace norvane::bench {

namespace {

constexpr int kRecipients = 50;
constexpr int kSmall = 200;

using Envelope = NVMEnvelopeDefinition;

template <class T>
std::shared_ptr<T> made(int number) {
    auto tab = std::make_shared<T>();
    tab->tabLabel = "Label " + std::to_string(number % 97);
    tab->tabId = std::to_string(number);
    tab->documentId = "1";
    return tab;
}

/// A third texts, a third check boxes, a third radios of one group.
std::shared_ptr<NVMTabs> tabsOf(int count) {
    auto tabs = std::make_shared<NVMTabs>();
    const auto group = std::make_shared<NVMRadioGroup>();
    group->radios.emplace();
    for (int i = 0; i < count; ++i) {
        if (i % 3 == 0) tabs->addTab(made<NVMText>(i));
        if (i % 3 == 1) tabs->addTab(made<NVMCheckbox>(i));
        if (i % 3 == 2) group->radios->push_back(made<NVMRadio>(i));
    }
    group->adoptRadios();
    tabs->radioGroupTabs = {group};
    return tabs;
}

std::shared_ptr<Envelope> envelopeWith(int tabs) {
    static std::map<int, std::shared_ptr<Envelope>> made;
    auto& envelope = made[tabs];
    if (envelope) return envelope;
    envelope = std::make_shared<Envelope>();
    envelope->recipients = std::make_shared<NVMRecipients>();
    for (int i = 0; i < kRecipients; ++i) {
        const auto signer = std::make_shared<NVMSigner>();
        signer->recipientId = std::to_string(i);
        signer->routingOrder = kRecipients - i;
        signer->tabs = tabsOf(tabs / kRecipients);
        envelope->recipients->addRecipient(signer);
    }
    return envelope;
}

/// One signer has them all.
std::shared_ptr<Envelope> loneSignerWith(int tabs) {
    static std::map<int, std::shared_ptr<Envelope>> made;
    auto& envelope = made[tabs];
    if (envelope) return envelope;
    const auto signer = std::make_shared<NVMSigner>();
    signer->tabs = tabsOf(tabs);
    envelope = std::make_shared<Envelope>();
    envelope->recipients = std::make_shared<NVMRecipients>();
    envelope->recipients->addRecipient(signer);
    return envelope;
}

const TabValueDefaults& hundredDefaults() {
    static const TabValueDefaults defaults = [] {
        TabValueDefaults values;
        for (int i = 0; i < 100; ++i)
            values.emplace_back("LABEL " + std::to_string(i), "value");
        return values;
    }();
    return defaults;
}

void askEveryone(Envelope& envelope) {
    for (const auto& signer : envelope.allSigners()) {
        benchmark::DoNotOptimize(envelope.remainingTagsIncludingOptionalForRecipient(signer));
        benchmark::DoNotOptimize(envelope.remainingRequiredTagsForRecipient(signer));
        benchmark::DoNotOptimize(envelope.requiredNavigableTagsForRecipient(signer));
    }
}

void assign(Envelope& envelope) { envelope.assignLabelsAndIDsToTabs(); }
void collect(Envelope& envelope) { benchmark::DoNotOptimize(envelope.tagsForDocumentId("1")); }
void write(Envelope& envelope) { benchmark::DoNotOptimize(valuesFromEnvelope(envelope)); }
void copy(Envelope& envelope) { benchmark::DoNotOptimize(Envelope(envelope, false)); }
void applyDefaults(Envelope& envelope) { envelope.applyTabValueDefaults(hundredDefaults()); }

struct Question {
    const char* name;
    void (*ask)(Envelope& envelope);
    std::shared_ptr<Envelope> (*envelope)(int tabs);
};

constexpr Question kQuestions[] = {
    {"remaining, required, navigable", askEveryone, envelopeWith},
    {"the same, one signer, one group", askEveryone, loneSignerWith},
    {"labels and ids", assign, envelopeWith},
    {"tabs of a document", collect, envelopeWith},
    {"a hundred tab defaults", applyDefaults, envelopeWith},
    {"copy", copy, envelopeWith},
    {"as values", write, envelopeWith},
};

void measure(benchmark::State& state, const Question& question, int tabs, int times) {
    benchHome();
    if (nvm_setDefaults(1, NVM_SETUP_TAB_DEFAULTS_COMPARISION))
        state.SkipWithError("the configuration could not be written");
    const auto envelope = question.envelope(tabs);
    for (auto _ : state)
        for (int i = 0; i < times; ++i)
            question.ask(*envelope);
}

const bool isRegistered = [] {
    for (const Question& question : kQuestions) {
        for (const int factor : {1, 10, 100}) {
            const std::string line = std::string(question.name) + ", " + std::to_string(kSmall * factor);
            benchmark::RegisterBenchmark((line + "/kit").c_str(), measure, question, kSmall * factor, 1)
                ->Unit(benchmark::kMillisecond);
            if (factor == 1) continue;
            benchmark::RegisterBenchmark((line + "/limit").c_str(), measure, question, kSmall, factor)
                ->Unit(benchmark::kMillisecond);
        }
    }
    return true;
}();

} // namespace

} // namespace norvane::bench
