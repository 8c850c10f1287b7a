#pragma once

#include <norvane/model/NVMTextTabProtocol.h>

namespace norvane {

// clang-format off
#define NVM_CHECKBOX_OWN_FIELDS(FIELD, R) \
    FIELD(R, Bool, selected) FIELD(R, Bool, shared) FIELD(R, Bool, requireInitialOnSharedChange)
#define NVM_CHECKBOX_FIELDS(FIELD, R) NVM_TEXT_TAB_FIELDS(FIELD, R) NVM_CHECKBOX_OWN_FIELDS(FIELD, R)
// clang-format on

/// A box that the recipient checks.
struct NVMCheckbox : NVMTextTabProtocol {
    NORVANE_RECORD(NVMCheckbox, NVM_CHECKBOX_OWN_FIELDS)

    NVMCheckbox() { tabType = NVMTabTypeCheckbox; }
    NVMCheckbox(const NVMDocument& document, std::int64_t onPage, const NVMRecipient& signer);
    explicit NVMCheckbox(const NVMCDTab& stored);
    const RecordType& recordType() const override { return type(); }
    bool lacksValue() override;
};

} // namespace norvane
