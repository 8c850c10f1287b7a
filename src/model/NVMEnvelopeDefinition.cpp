#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/platform/Value.h>
#include <norvane/sdk/Configuration.h>

#include <algorithm>
#include <unordered_map>

namespace norvane {

NORVANE_TABLE(NVMEnvelopeDefinition, NVM_ENVELOPE_TEMPLATE_FIELDS)

namespace {

std::int64_t orderOf(const NVMDocument& document) { return Value(document.order).integerValue(); }

void assignLabelAndId(NVMTab& tab, std::size_t number) {
    const std::string digits = std::to_string(number);
    if (!tab.tabLabel) tab.tabLabel = tab.nvm_nameForTagType().value_or("") + " tab " + digits;
    if (!tab.tabId) tab.tabId = digits;
}

/// Which groups have a selected radio; asks each group once, however many radios it has.
class Selections {
  public:
    bool isAnySelected(const std::shared_ptr<NVMRadioGroup>& group) {
        if (!group || !group->radios) return false;
        const auto [entry, isNew] = byGroup_.try_emplace(group.get(), false);
        if (isNew)
            entry->second = std::any_of(group->radios->begin(), group->radios->end(),
                                        [](const auto& radio) { return radio->selected; });
        return entry->second;
    }

  private:
    std::unordered_map<const NVMRadioGroup*, bool> byGroup_;
};

} // namespace

NVMEnvelopeDefinition::NVMEnvelopeDefinition(const NVMEnvelopeTemplate& envelope, bool includePdfs)
    : NVMEnvelopeTemplate(envelope, includePdfs) {}

DocumentList NVMEnvelopeDefinition::sortedDocumentsByOrder() const {
    DocumentList sorted = allDocuments();
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto& a, const auto& b) { return orderOf(*a) < orderOf(*b); });
    return sorted;
}

void NVMEnvelopeDefinition::assignLabelsAndIDsToTabsWithForceAssign(bool) {
    std::size_t number = 1;
    for (const auto& signer : allSigners()) {
        const auto tags = tagsForSigner(signer);
        if (!tags) continue;
        for (const auto& tab : *tags)
            assignLabelAndId(*tab, number++);
    }
}

bool NVMEnvelopeDefinition::getTagValue(NVMTab& tab) const {
    return tab.tabType != NVMTabTypeUnsupported && tab.lacksValue();
}

std::optional<TabList> NVMEnvelopeDefinition::remainingTagsIncludingOptionalForRecipient(
    const std::shared_ptr<NVMRecipient>& recipient) const {
    auto tags = tagsForSigner(recipient);
    if (!tags) return std::nullopt;
    Selections selections;
    std::erase_if(*tags, [&](const auto& tab) {
        if (tab->tabType == NVMTabTypeUnsupported) return true;
        if (&tab->recordType() != &NVMRadio::type()) return !getTagValue(*tab);
        return selections.isAnySelected(static_cast<const NVMRadio&>(*tab).radioGroup.lock());
    });
    return tags;
}

std::optional<TabList> NVMEnvelopeDefinition::remainingRequiredTagsForRecipient(
    const std::shared_ptr<NVMRecipient>& recipient) const {
    auto tags = remainingTagsIncludingOptionalForRecipient(recipient);
    if (!tags) return std::nullopt;
    std::erase_if(*tags, [](const auto& tab) { return !tab->nvm_required(); });
    if (tags->empty()) return std::nullopt;
    return tags;
}

std::optional<TabList> NVMEnvelopeDefinition::requiredNavigableTagsForRecipient(
    const std::shared_ptr<NVMRecipient>& recipient) const {
    auto tags = tagsForSigner(recipient);
    if (!tags) return std::nullopt;
    std::erase_if(*tags, [](const auto& tab) {
        return tab->tabType == NVMTabTypeFullName || tab->tabType == NVMTabTypeDateSigned ||
               !tab->nvm_required();
    });
    return tags;
}

bool NVMEnvelopeDefinition::isReadonlyAndRequiredTextTabsToEditableConversionPending() const {
    return configuredValueForSetupKey(
        NVM_SETUP_OFFLINE_SIGNING_CONVERT_INVALID_READONLY_REQUIRED_TEXTTABS_TO_EDITABLE);
}

} // namespace norvane
