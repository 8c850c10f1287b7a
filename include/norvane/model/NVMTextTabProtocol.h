#pragma once

#include <norvane/model/NVMTab.h>

namespace norvane {

// clang-format off
#define NVM_TEXT_TAB_OWN_FIELDS(FIELD, R) FIELD(R, Bool, required) FIELD(R, Bool, locked)
#define NVM_TEXT_TAB_FIELDS(FIELD, R) NVM_TAB_FIELDS(FIELD, R) NVM_TEXT_TAB_OWN_FIELDS(FIELD, R)
// clang-format on

/// A tab that a recipient enters: text, check box, radio, company, title.
struct NVMTextTabProtocol : NVMTab {
    NORVANE_RECORD(NVMTextTabProtocol, NVM_TEXT_TAB_OWN_FIELDS)

    using NVMTab::NVMTab;
    const RecordType& recordType() const override { return type(); }
    bool nvm_locked() const override { return locked; }
    void nvm_setLocked(bool isLocked) override { locked = isLocked; }

  protected:
    bool isKindRequired() const override { return required; }
};

} // namespace norvane
