#include "src/model/TabValueDefaults.h"

#include <norvane/platform/TextCompare.h>
#include <norvane/sdk/Configuration.h>

#include <algorithm>

namespace norvane {
namespace {

bool isFillable(const NVMTab& tab) {
    return tab.tabType == NVMTabTypeText || tab.tabType == NVMTabTypeCompany ||
           tab.tabType == NVMTabTypeTitle;
}

void fill(const TabList& tabs, const TabValueMatcher& matcher) {
    for (const auto& tab : tabs) {
        if (!isFillable(*tab)) continue;
        if (auto value = matcher.valueForLabel(tab->tabLabel)) tab->value = std::move(value);
    }
}

} // namespace

TabValueMatcher::TabValueMatcher(std::uint64_t comparison, const TabValueDefaults& defaults)
    : comparison_(comparison) {
    for (const auto& [key, value] : defaults) {
        if (!value) continue;
        if (comparison == kLabelIsKey)
            byKey_[key] = &*value;
        else if (comparison == kLabelEqualsKeyIgnoringCase)
            byKey_[foldedText(key, Diacritics::Ignore)] = &*value;
        else if (comparison == kLabelContainsKey)
            pieces_.emplace_back(key, &*value);
    }
}

std::optional<std::string> TabValueMatcher::valueForLabel(const std::optional<std::string>& label) const {
    if (!label) return std::nullopt;
    if (comparison_ == kLabelContainsKey) {
        const auto piece = std::find_if(pieces_.rbegin(), pieces_.rend(), [&](const auto& entry) {
            return label->find(entry.first) != std::string::npos;
        });
        return piece == pieces_.rend() ? std::nullopt : std::optional(*piece->second);
    }
    if (byKey_.empty()) return std::nullopt;
    const auto entry =
        byKey_.find(comparison_ == kLabelIsKey ? *label : foldedText(*label, Diacritics::Ignore));
    return entry == byKey_.end() ? std::nullopt : std::optional(*entry->second);
}

void NVMEnvelopeDefinition::applyTabValueDefaults(const std::optional<TabValueDefaults>& defaults) {
    // One pass with all keys ends as one pass a key does: the last matching key has the last word.
    if (defaults)
        fill(allTags(), TabValueMatcher(configuredValueForSetupKeyTabDefaultsComparison(), *defaults));
}

void NVMEnvelopeDefinition::applyDefaultsToTabsWithTabLabel(const std::string& key,
                                                            std::uint64_t matchingComparision,
                                                            const TabValueDefaults& defaults) {
    if (matchingComparision == kLabelIsKey)
        return fill(allTags(), TabValueMatcher(matchingComparision, defaults));
    TabValueDefaults ofKey;
    std::copy_if(defaults.begin(), defaults.end(), std::back_inserter(ofKey),
                 [&](const auto& entry) { return entry.first == key; });
    fill(allTags(), TabValueMatcher(matchingComparision, ofKey));
}

} // namespace norvane
