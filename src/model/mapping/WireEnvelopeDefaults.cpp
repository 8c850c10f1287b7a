#include "src/model/CustomFieldMerge.h"
#include "src/model/RecordConversion.h"
#include "src/model/TabValueDefaults.h"

#include <norvane/api/NVESEnvelopes.h>
#include <norvane/model/mapping/WireEnvelopeDefaults.h>
#include <norvane/sdk/Configuration.h>

namespace norvane {
namespace {

constexpr RecordConversion domainToWire{std::span<const ConversionRule>()};

template <class T>
void fill(const field::List<T>& tabs, std::uint64_t comparison, const TabValueDefaults& defaults) {
    if (!tabs) return;
    for (const auto& tab : *tabs)
        if (auto value = valueForTabLabel(tab->tabLabel, comparison, defaults)) tab->value = std::move(value);
}

} // namespace

void applyTabValueDefaults(NVESEnvelopeDefinition& envelope,
                           const std::optional<TabValueDefaults>& defaults) {
    if (!defaults || !envelope.templateRoles) return;
    const std::uint64_t comparison = configuredValueForSetupKeyTabDefaultsComparison();
    for (const auto& role : *envelope.templateRoles) {
        if (!role->tabs) continue;
        fill(role->tabs->textTabs, comparison, *defaults);
        fill(role->tabs->companyTabs, comparison, *defaults);
        fill(role->tabs->titleTabs, comparison, *defaults);
    }
}

std::optional<std::string> tabValueForNVESTabLabel(const std::optional<std::string>& label,
                                                   std::uint64_t matchingComparision,
                                                   const TabValueDefaults& defaults) {
    return valueForTabLabel(label, matchingComparision, defaults);
}

void applyCustomFields(NVESEnvelopeDefinition& envelope, const NVMCustomFields* given) {
    if (!given) return;
    auto fields = domainToWire.make<NVESCustomFields>(*given);
    if (!envelope.customFields) {
        envelope.customFields = std::move(fields);
        return;
    }
    mergeCustomFields(fields->textCustomFields, envelope.customFields->textCustomFields);
    mergeCustomFields(fields->listCustomFields, envelope.customFields->listCustomFields);
}

void updateSubjectAndNoteForEnvelope(NVESEnvelopeDefinition& envelope,
                                     const std::optional<std::string>& emailSubject,
                                     const std::optional<std::string>& emailBlurb) {
    if (emailSubject) envelope.emailSubject = emailSubject;
    if (emailBlurb) envelope.emailBlurb = emailBlurb;
}

} // namespace norvane
