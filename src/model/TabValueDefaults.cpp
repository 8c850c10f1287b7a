#include "src/model/TabValueDefaults.h"

#include <norvane/platform/TextCompare.h>
#include <norvane/sdk/Configuration.h>

#include <algorithm>

namespace norvane {
namespace {

std::optional<std::string> entryOf(const std::string& key, const TabValueDefaults& defaults) {
    const auto entry =
        std::find_if(defaults.rbegin(), defaults.rend(), [&](const auto& pair) { return pair.first == key; });
    return entry == defaults.rend() ? std::nullopt : entry->second;
}

bool isFillable(const NVMTab& tab) {
    return tab.tabType == NVMTabTypeText || tab.tabType == NVMTabTypeCompany ||
           tab.tabType == NVMTabTypeTitle;
}

} // namespace

std::optional<std::string> valueForTabLabel(const std::optional<std::string>& label, const std::string& key,
                                            std::uint64_t comparison, const TabValueDefaults& defaults) {
    if (!label) return std::nullopt;
    switch (comparison) {
    case kLabelIsKey:
        return entryOf(*label, defaults);
    case kLabelEqualsKeyIgnoringCase:
        if (!foldedEqual(*label, key, Diacritics::Ignore)) return std::nullopt;
        return entryOf(key, defaults);
    case kLabelContainsKey:
        // An empty text is no piece of another.
        if (key.empty() || label->find(key) == std::string::npos) return std::nullopt;
        return entryOf(key, defaults);
    default:
        return std::nullopt;
    }
}

std::optional<std::string> valueForTabLabel(const std::optional<std::string>& label, std::uint64_t comparison,
                                            const TabValueDefaults& defaults) {
    std::optional<std::string> value;
    for (const auto& entry : defaults)
        if (auto found = valueForTabLabel(label, entry.first, comparison, defaults)) value = std::move(found);
    return value;
}

void NVMEnvelopeDefinition::applyTabValueDefaults(const std::optional<TabValueDefaults>& defaults) {
    if (!defaults) return;
    const std::uint64_t comparison = configuredValueForSetupKeyTabDefaultsComparison();
    for (const auto& entry : *defaults)
        applyDefaultsToTabsWithTabLabel(entry.first, comparison, *defaults);
}

void NVMEnvelopeDefinition::applyDefaultsToTabsWithTabLabel(const std::string& key,
                                                            std::uint64_t matchingComparision,
                                                            const TabValueDefaults& defaults) {
    for (const auto& tab : allTags()) {
        if (!isFillable(*tab)) continue;
        if (auto value = valueForTabLabel(tab->tabLabel, key, matchingComparision, defaults))
            tab->value = std::move(value);
    }
}

} // namespace norvane
