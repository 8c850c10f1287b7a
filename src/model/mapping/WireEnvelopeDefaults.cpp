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
void fill(const field::List<T>& tabs, const TabValueMatcher& matcher) {
    if (!tabs) return;
    for (const auto& tab : *tabs)
        if (auto value = matcher.valueForLabel(tab->tabLabel)) tab->value = std::move(value);
}

} // namespace

void applyTabValueDefaults(NVESEnvelopeDefinition& envelope,
                           const std::optional<TabValueDefaults>& defaults) {
    if (!defaults || !envelope.templateRoles) return;
    const TabValueMatcher matcher(configuredValueForSetupKeyTabDefaultsComparison(), *defaults);
    for (const auto& role : *envelope.templateRoles) {
        if (!role->tabs) continue;
        fill(role->tabs->textTabs, matcher);
        fill(role->tabs->companyTabs, matcher);
        fill(role->tabs->titleTabs, matcher);
    }
}

std::optional<std::string> tabValueForNVESTabLabel(const std::optional<std::string>& label,
                                                   std::uint64_t matchingComparision,
                                                   const TabValueDefaults& defaults) {
    return TabValueMatcher(matchingComparision, defaults).valueForLabel(label);
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

std::shared_ptr<NVESTextCustomField>
createNVESTextCustomFieldFromUserDefinedCustomField(const NVMTextCustomField& field) {
    return domainToWire.make<NVESTextCustomField>(field);
}

std::shared_ptr<NVESListCustomField>
createNVESListCustomFieldFromUserDefinedCustomField(const NVMListCustomField& field) {
    return domainToWire.make<NVESListCustomField>(field);
}

void updateSubjectAndNoteForEnvelope(NVESEnvelopeDefinition& envelope,
                                     const std::optional<std::string>& emailSubject,
                                     const std::optional<std::string>& emailBlurb) {
    if (emailSubject) envelope.emailSubject = emailSubject;
    if (emailBlurb) envelope.emailBlurb = emailBlurb;
}

} // namespace norvane
