#include <norvane/model/NVMTab.h>

#include <norvane/model/NVMDocument.h>
#include <norvane/model/NVMTabs.h>

#include <algorithm>
#include <limits>

namespace norvane {

NORVANE_TABLE(NVMTab, NVM_TAB_FIELDS)
NORVANE_TABLE(NVMImageTabProtocol, NVM_IMAGE_TAB_FIELDS)
NORVANE_TABLE(NVMTextTabProtocol, NVM_TEXT_TAB_FIELDS)
NORVANE_TABLE(NVMSignHere, NVM_SIGN_HERE_FIELDS)
NORVANE_TABLE(NVMInitialHere, NVM_INITIAL_HERE_FIELDS)
NORVANE_TABLE(NVMText, NVM_TEXT_FIELDS)
NORVANE_TABLE(NVMCheckbox, NVM_CHECKBOX_FIELDS)
NORVANE_TABLE(NVMCompany, NVM_COMPANY_FIELDS)
NORVANE_TABLE(NVMTitle, NVM_TITLE_FIELDS)
NORVANE_TABLE(NVMFullName, NVM_FULL_NAME_FIELDS)
NORVANE_TABLE(NVMDateSigned, NVM_DATE_SIGNED_FIELDS)
NORVANE_TABLE(NVMFormula, NVM_FORMULA_FIELDS)
NORVANE_TABLE(NVMRadio, NVM_RADIO_FIELDS)
NORVANE_TABLE(NVMRadioGroup, NVM_RADIO_GROUP_FIELDS)

NVMTab::NVMTab(const NVMDocument& document, std::int64_t onPage, const NVMRecipient& signer)
    : documentId(document.documentId)
    , recipientId(signer.recipientId)
    , pageNumber(static_cast<double>(onPage)) {}

} // namespace norvane
