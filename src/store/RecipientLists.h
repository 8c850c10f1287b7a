#pragma once

#include <norvane/model/NVMRecipientType.h>
#include <norvane/model/NVMTabType.h>
#include <norvane/store/NVMCDRecipients.h>

#include <cstddef>
#include <memory>
#include <string>

namespace norvane {

/// The list that holds recipients of the kind; null for numbers outside 1 to 7.
field::List<NVMCDRecipient>* recipientsOfKind(NVMCDRecipients& recipients, NVMRecipientType kind);

/// Where the recipient of that identifier stands; no list when it stands nowhere.
struct RecipientPlace {
    field::List<NVMCDRecipient>* list = nullptr;
    std::size_t index = 0;
};
RecipientPlace findRecipientPlace(NVMCDRecipients& recipients, const std::string& recipientId);

/// The list that holds new tabs of the kind; null for kinds that have none of their own, and for formulas.
field::List<NVMCDTab>* tabsOfKind(NVMCDTabs& tabs, NVMTabType kind);
/// Of any list, radios too; null when there is none.
std::shared_ptr<NVMCDTab> findTab(const NVMCDTabs& tabs, const std::string& tabId);
/// Answers whether it was there. A radio group left without radios stays.
bool removeTab(NVMCDTabs& tabs, const std::string& tabId);

} // namespace norvane
