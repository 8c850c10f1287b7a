#pragma once

#include <norvane/model/NVMMergeField.h>
#include <norvane/model/NVMTabFrame.h>
#include <norvane/model/NVMTabType.h>
#include <norvane/platform/Geometry.h>
#include <norvane/record/Record.h>
#include <norvane/sdk/NVMErrorDetails.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace norvane {

struct NVMCDTab;
struct NVMDocument;
struct NVMRecipient;

// clang-format off
#define NVM_TAB_FIELDS(FIELD, R) \
    FIELD(R, Integer, tabType) FIELD(R, Text, documentId) FIELD(R, Text, recipientId) \
    FIELD(R, Text, tabId) FIELD(R, Text, tabLabel) FIELD(R, Text, name) FIELD(R, Text, customTabId) \
    FIELD(R, Text, status) FIELD(R, Text, value) FIELD(R, Number, pageNumber) \
    FIELD(R, Number, tabOrder) FIELD(R, Bool, templateLocked) FIELD(R, Bool, templateRequired) \
    FIELD(R, Text, anchorString) FIELD(R, Text, anchorUnits) FIELD(R, Text, anchorHorizontalAlignment) \
    FIELD(R, Number, anchorXOffset) FIELD(R, Number, anchorYOffset) \
    FIELD(R, Bool, anchorIgnoreIfNotPresent) FIELD(R, Bool, anchorCaseSensitive) \
    FIELD(R, Bool, anchorMatchWholeWord) FIELD(R, Text, conditionalParentLabel) \
    FIELD(R, Text, conditionalParentValue) FIELD(R, Record<NVMTabFrame>, frame) \
    FIELD(R, Record<NVMMergeField>, mergeField) FIELD(R, Record<NVMErrorDetails>, errorDetails)

/// The look of a tab that shows text.
#define NVM_TAB_FONT_FIELDS(FIELD, R) \
    FIELD(R, Text, font) FIELD(R, Text, fontColor) FIELD(R, Text, fontSize) FIELD(R, Bool, bold) \
    FIELD(R, Bool, italic) FIELD(R, Bool, underline)

/// What tabs that hold an entered text have beside their look.
#define NVM_TAB_ENTRY_FIELDS(FIELD, R) \
    FIELD(R, Text, originalValue) FIELD(R, Number, maxLength) FIELD(R, Bool, concealValueOnDocument) \
    FIELD(R, Bool, disableAutoSize)

/// What text and formula tabs have alone.
#define NVM_TAB_VALIDATION_FIELDS(FIELD, R) \
    FIELD(R, Text, formula) FIELD(R, Text, validationPattern) FIELD(R, Text, validationMessage) \
    FIELD(R, Bool, isPaymentAmount) FIELD(R, Bool, shared) \
    FIELD(R, Bool, requireInitialOnSharedChange) FIELD(R, Bool, senderRequired) \
    FIELD(R, Bool, requireAll)
// clang-format on

/// A field on a page that a recipient fills in or signs: what all kinds have in common. `recipientId` names
/// the recipient who owns it. It shows only when the tab labelled `conditionalParentLabel` holds
/// `conditionalParentValue`. Made as such, not as a kind, it is of type 0: unsupported. Copying copies the
/// fields and shares the sub-records; see NVMTabs::withTabs for independent copies.
struct NVMTab {
    NORVANE_RECORD(NVMTab, NVM_TAB_FIELDS)

    NVMTab() = default;
    /// On the given page (from 1) of the document, owned by the signer.
    NVMTab(const NVMDocument& document, std::int64_t onPage, const NVMRecipient& signer);
    explicit NVMTab(const NVMCDTab& stored);
    NVMTab(const NVMTab&) = default;
    NVMTab& operator=(const NVMTab&) = default;
    virtual ~NVMTab() = default;

    /// The table of the record's own kind.
    virtual const RecordType& recordType() const { return type(); }

    /// Whether the recipient must fill the tab in. A tab of type 0 and kinds that can be neither optional nor
    /// entered (full name, date signed, formula) always count as required, deliberately.
    bool nvm_required() const { return tabType == NVMTabTypeUnsupported || isKindRequired(); }
    /// Whether the recipient cannot change it; false for kinds that have no such field.
    virtual bool nvm_locked() const { return false; }
    /// Does nothing unless the kind is an NVMTextTabProtocol.
    virtual void nvm_setLocked(bool) {}
    /// Whether it still lacks a value. Asking a check box or radio rewrites its `value`, deliberately: "X"
    /// when selected, else the empty text.
    virtual bool lacksValue() { return false; }

    /// The name of its kind in the user's language; nothing for numbers that name no kind.
    std::optional<std::string> nvm_nameForTagType() const { return nameForTagType(tabType); }
    /// A blank and the tab's id; the kind is no part of it, deliberately.
    std::string createTabLabel() const;
    /// An absent page number counts as 0.
    void increasePageNumberByCount(std::int64_t count);
    /// All zero without a frame.
    Rect frameAsCGRect() const;

  protected:
    /// `nvm_required` of a tab that is of its own kind.
    virtual bool isKindRequired() const { return true; }
};

using TabList = std::vector<std::shared_ptr<NVMTab>>;

} // namespace norvane
