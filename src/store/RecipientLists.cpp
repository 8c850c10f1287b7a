#include "src/store/RecipientLists.h"

#include <algorithm>
#include <array>

namespace norvane {

namespace {

using TabLists = std::array<field::List<NVMCDTab> NVMCDTabs::*, 9>;

constexpr TabLists kTabLists = {
    &NVMCDTabs::signHereTabs, &NVMCDTabs::initialHereTabs, &NVMCDTabs::textTabs,
    &NVMCDTabs::checkboxTabs, &NVMCDTabs::companyTabs,     &NVMCDTabs::titleTabs,
    &NVMCDTabs::fullNameTabs, &NVMCDTabs::dateSignedTabs,  &NVMCDTabs::formulaTabs};

std::shared_ptr<NVMCDTab> findIn(const field::List<NVMCDTab>& list, const std::string& tabId) {
    if (!list) return nullptr;
    const auto found =
        std::find_if(list->begin(), list->end(), [&](const auto& tab) { return tab->tabId == tabId; });
    return found == list->end() ? nullptr : *found;
}

bool removeFrom(field::List<NVMCDTab>& list, const std::string& tabId) {
    return list && std::erase_if(*list, [&](const auto& tab) { return tab->tabId == tabId; }) > 0;
}

} // namespace

field::List<NVMCDRecipient>* recipientsOfKind(NVMCDRecipients& recipients, NVMRecipientType kind) {
    switch (kind) {
    case NVMRecipientTypeAgent:
        return &recipients.agents;
    case NVMRecipientTypeCarbonCopy:
        return &recipients.carbonCopies;
    case NVMRecipientTypeCertifiedDelivery:
        return &recipients.certifiedDeliveries;
    case NVMRecipientTypeEditor:
        return &recipients.editors;
    case NVMRecipientTypeIntermediary:
        return &recipients.intermediaries;
    case NVMRecipientTypeInPersonSigner:
        return &recipients.inPersonSigners;
    case NVMRecipientTypeSigner:
        return &recipients.signers;
    default:
        return nullptr;
    }
}

RecipientPlace findRecipientPlace(NVMCDRecipients& recipients, const std::string& recipientId) {
    for (NVMRecipientType kind = NVMRecipientTypeAgent; kind <= NVMRecipientTypeSigner; ++kind) {
        auto* list = recipientsOfKind(recipients, kind);
        for (std::size_t index = 0; *list && index < (*list)->size(); ++index)
            if ((**list)[index]->recipientId == recipientId) return {list, index};
    }
    return {};
}

field::List<NVMCDTab>* tabsOfKind(NVMCDTabs& tabs, NVMTabType kind) {
    if (kind < NVMTabTypeSignHere || kind > NVMTabTypeDateSigned) return nullptr;
    switch (kind) {
    case NVMTabTypeSignHere:
        return &tabs.signHereTabs;
    case NVMTabTypeInitialHere:
        return &tabs.initialHereTabs;
    case NVMTabTypeText:
        return &tabs.textTabs;
    case NVMTabTypeCheckbox:
        return &tabs.checkboxTabs;
    case NVMTabTypeCompany:
        return &tabs.companyTabs;
    case NVMTabTypeTitle:
        return &tabs.titleTabs;
    case NVMTabTypeFullName:
        return &tabs.fullNameTabs;
    default:
        return &tabs.dateSignedTabs;
    }
}

std::shared_ptr<NVMCDTab> findTab(const NVMCDTabs& tabs, const std::string& tabId) {
    for (const auto list : kTabLists)
        if (auto tab = findIn(tabs.*list, tabId)) return tab;
    if (!tabs.radioGroupTabs) return nullptr;
    for (const auto& group : *tabs.radioGroupTabs)
        if (auto tab = findIn(group->radios, tabId)) return tab;
    return nullptr;
}

bool removeTab(NVMCDTabs& tabs, const std::string& tabId) {
    bool removed = false;
    for (const auto list : kTabLists)
        removed = removeFrom(tabs.*list, tabId) || removed;
    if (!tabs.radioGroupTabs) return removed;
    for (const auto& group : *tabs.radioGroupTabs)
        removed = removeFrom(group->radios, tabId) || removed;
    return removed;
}

} // namespace norvane
