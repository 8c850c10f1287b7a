#include <norvane/model/NVMDocument.h>
#include <norvane/model/NVMRecipient.h>
#include <norvane/model/NVMTab.h>
#include <norvane/model/NVMTabs.h>

#include <atomic>

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

std::string NVMTab::createTabLabel() const { return " " + tabId.value_or(""); }

void NVMTab::increasePageNumberByCount(std::int64_t count) {
    pageNumber = pageNumber.value_or(0) + static_cast<double>(count);
}

Rect NVMTab::frameAsCGRect() const {
    if (!frame) return {};
    return {static_cast<double>(frame->originX), static_cast<double>(frame->originY),
            static_cast<double>(frame->width), static_cast<double>(frame->height)};
}

namespace {

bool isEmpty(const std::optional<std::string>& text) { return !text || text->empty(); }

/// What the constructors of the kinds share: the type, and a frame of the kind's default size.
void placeAs(NVMTab& tab, NVMTabType type) {
    const Size size = defaultSizeForTagType(type);
    tab.tabType = type;
    tab.frame = std::make_shared<NVMTabFrame>(0, 0, static_cast<std::int64_t>(size.width),
                                              static_cast<std::int64_t>(size.height));
}

} // namespace

#define NORVANE_PLACED_TAB(KIND, BASE)                                                                       \
    NVM##KIND::NVM##KIND(const NVMDocument& document, std::int64_t onPage, const NVMRecipient& signer)       \
        : BASE(document, onPage, signer) {                                                                   \
        placeAs(*this, NVMTabType##KIND);                                                                    \
    }
NORVANE_PLACED_TAB(SignHere, NVMImageTabProtocol)
NORVANE_PLACED_TAB(InitialHere, NVMImageTabProtocol)
NORVANE_PLACED_TAB(Text, NVMTextTabProtocol)
NORVANE_PLACED_TAB(Checkbox, NVMTextTabProtocol)
NORVANE_PLACED_TAB(Company, NVMTextTabProtocol)
NORVANE_PLACED_TAB(Title, NVMTextTabProtocol)
NORVANE_PLACED_TAB(FullName, NVMTab)
NORVANE_PLACED_TAB(DateSigned, NVMTab)
NORVANE_PLACED_TAB(Formula, NVMTab)
NORVANE_PLACED_TAB(Radio, NVMTextTabProtocol)
#undef NORVANE_PLACED_TAB

bool NVMImageTabProtocol::lacksValue() { return !imageData || !imageData->data; }
bool NVMText::lacksValue() { return isEmpty(value); }
bool NVMCompany::lacksValue() { return isEmpty(value); }
bool NVMTitle::lacksValue() { return isEmpty(value); }

bool NVMCheckbox::lacksValue() {
    value = selected ? "X" : "";
    return false;
}

bool NVMRadio::lacksValue() {
    value = selected ? "X" : "";
    return false;
}

std::uint64_t NVMRadio::newTabIdIdentity() {
    static std::atomic<std::uint64_t> last = 0;
    return ++last;
}

void NVMRadioGroup::adoptRadios() {
    if (!radios) return;
    for (const auto& radio : *radios)
        radio->radioGroup = weak_from_this();
}

} // namespace norvane
