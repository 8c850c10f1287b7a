#pragma once

#include <norvane/model/NVMTextTabProtocol.h>

namespace norvane {

// clang-format off
#define NVM_COMPANY_OWN_FIELDS(FIELD, R) NVM_TAB_ENTRY_FIELDS(FIELD, R) NVM_TAB_FONT_FIELDS(FIELD, R)
#define NVM_COMPANY_FIELDS(FIELD, R) NVM_TEXT_TAB_FIELDS(FIELD, R) NVM_COMPANY_OWN_FIELDS(FIELD, R)
// clang-format on

/// The recipient's company.
struct NVMCompany : NVMTextTabProtocol {
    NORVANE_RECORD(NVMCompany, NVM_COMPANY_OWN_FIELDS)

    NVMCompany() { tabType = NVMTabTypeCompany; }
    NVMCompany(const NVMDocument& document, std::int64_t onPage, const NVMRecipient& signer);
    explicit NVMCompany(const NVMCDTab& stored);
    const RecordType& recordType() const override { return type(); }
    bool lacksValue() override;
};

} // namespace norvane
