#pragma once

#include <norvane/model/NVMTab.h>

namespace norvane {

// clang-format off
#define NVM_DATE_SIGNED_OWN_FIELDS(FIELD, R) NVM_TAB_FONT_FIELDS(FIELD, R)
#define NVM_DATE_SIGNED_FIELDS(FIELD, R) NVM_TAB_FIELDS(FIELD, R) NVM_DATE_SIGNED_OWN_FIELDS(FIELD, R)
// clang-format on

/// The day of signing; fills itself.
struct NVMDateSigned : NVMTab {
    NORVANE_RECORD(NVMDateSigned, NVM_DATE_SIGNED_OWN_FIELDS)

    NVMDateSigned() { tabType = NVMTabTypeDateSigned; }
    NVMDateSigned(const NVMDocument& document, std::int64_t onPage, const NVMRecipient& signer);
    explicit NVMDateSigned(const NVMCDTab& stored);
    const RecordType& recordType() const override { return type(); }
};

} // namespace norvane
