#pragma once

#include <norvane/model/NVMTab.h>
#include <norvane/model/NVMTextTabProtocol.h>

namespace norvane {

// clang-format off
#define NVM_FORMULA_OWN_FIELDS(FIELD, R) \
    NVM_TAB_VALIDATION_FIELDS(FIELD, R) NVM_TAB_ENTRY_FIELDS(FIELD, R) NVM_TAB_FONT_FIELDS(FIELD, R) \
    NVM_TEXT_TAB_OWN_FIELDS(FIELD, R) FIELD(R, Number, width) FIELD(R, Number, roundDecimalPlaces) \
    FIELD(R, Text, xPosition) FIELD(R, Text, yPosition)
#define NVM_FORMULA_FIELDS(FIELD, R) NVM_TAB_FIELDS(FIELD, R) NVM_FORMULA_OWN_FIELDS(FIELD, R)
// clang-format on

/// A value computed from other tabs. It has `required` and `locked` of its own and yet is no
/// NVMTextTabProtocol, deliberately: it always counts as required and never lacks its value.
struct NVMFormula : NVMTab {
    NORVANE_RECORD(NVMFormula, NVM_FORMULA_OWN_FIELDS)

    NVMFormula() { tabType = NVMTabTypeFormula; }
    NVMFormula(const NVMDocument& document, std::int64_t onPage, const NVMRecipient& signer);
    explicit NVMFormula(const NVMCDTab& stored);
    const RecordType& recordType() const override { return type(); }
    bool nvm_locked() const override { return locked; }
};

} // namespace norvane
