#pragma once

#include <norvane/model/NVMTextTabProtocol.h>

namespace norvane {

// clang-format off
#define NVM_TITLE_OWN_FIELDS(FIELD, R) NVM_TAB_ENTRY_FIELDS(FIELD, R) NVM_TAB_FONT_FIELDS(FIELD, R)
#define NVM_TITLE_FIELDS(FIELD, R) NVM_TEXT_TAB_FIELDS(FIELD, R) NVM_TITLE_OWN_FIELDS(FIELD, R)
// clang-format on

/// The recipient's job title.
struct NVMTitle : NVMTextTabProtocol {
    NORVANE_RECORD(NVMTitle, NVM_TITLE_OWN_FIELDS)

    NVMTitle() { tabType = NVMTabTypeTitle; }
    NVMTitle(const NVMDocument& document, std::int64_t onPage, const NVMRecipient& signer);
    explicit NVMTitle(const NVMCDTab& stored);
    const RecordType& recordType() const override { return type(); }
    bool lacksValue() override;
};

} // namespace norvane
