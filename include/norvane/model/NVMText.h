#pragma once

#include <norvane/model/NVMTextTabProtocol.h>

namespace norvane {

// clang-format off
#define NVM_TEXT_OWN_FIELDS(FIELD, R) \
    NVM_TAB_VALIDATION_FIELDS(FIELD, R) NVM_TAB_ENTRY_FIELDS(FIELD, R) NVM_TAB_FONT_FIELDS(FIELD, R)
#define NVM_TEXT_FIELDS(FIELD, R) NVM_TEXT_TAB_FIELDS(FIELD, R) NVM_TEXT_OWN_FIELDS(FIELD, R)
// clang-format on

/// A text that the recipient enters.
struct NVMText : NVMTextTabProtocol {
    NORVANE_RECORD(NVMText, NVM_TEXT_OWN_FIELDS)

    NVMText() { tabType = NVMTabTypeText; }
    NVMText(const NVMDocument& document, std::int64_t onPage, const NVMRecipient& signer);
    explicit NVMText(const NVMCDTab& stored);
    const RecordType& recordType() const override { return type(); }
    bool lacksValue() override;
};

} // namespace norvane
