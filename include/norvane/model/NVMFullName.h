#pragma once

#include <norvane/model/NVMTab.h>

namespace norvane {

// clang-format off
#define NVM_FULL_NAME_OWN_FIELDS(FIELD, R) NVM_TAB_FONT_FIELDS(FIELD, R)
#define NVM_FULL_NAME_FIELDS(FIELD, R) NVM_TAB_FIELDS(FIELD, R) NVM_FULL_NAME_OWN_FIELDS(FIELD, R)
// clang-format on

/// The recipient's name; fills itself.
struct NVMFullName : NVMTab {
    NORVANE_RECORD(NVMFullName, NVM_FULL_NAME_OWN_FIELDS)

    NVMFullName() { tabType = NVMTabTypeFullName; }
    NVMFullName(const NVMDocument& document, std::int64_t onPage, const NVMRecipient& signer);
    explicit NVMFullName(const NVMCDTab& stored);
    const RecordType& recordType() const override { return type(); }
};

} // namespace norvane
