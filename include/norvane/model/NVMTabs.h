#pragma once

#include <norvane/model/NVMCheckbox.h>
#include <norvane/model/NVMCompany.h>
#include <norvane/model/NVMDateSigned.h>
#include <norvane/model/NVMFormula.h>
#include <norvane/model/NVMFullName.h>
#include <norvane/model/NVMInitialHere.h>
#include <norvane/model/NVMRadioGroup.h>
#include <norvane/model/NVMSignHere.h>
#include <norvane/model/NVMText.h>
#include <norvane/model/NVMTitle.h>
#include <norvane/record/Record.h>

#include <memory>
#include <string>
#include <vector>

namespace norvane {

struct NVESTabs;
struct NVMCDTabs;

// clang-format off
#define NVM_TABS_FIELDS(FIELD, R) \
    FIELD(R, List<NVMSignHere>, signHereTabs) FIELD(R, List<NVMInitialHere>, initialHereTabs) \
    FIELD(R, List<NVMFullName>, fullNameTabs) FIELD(R, List<NVMDateSigned>, dateSignedTabs) \
    FIELD(R, List<NVMCompany>, companyTabs) FIELD(R, List<NVMTitle>, titleTabs) \
    FIELD(R, List<NVMText>, textTabs) FIELD(R, List<NVMCheckbox>, checkboxTabs) \
    FIELD(R, List<NVMRadioGroup>, radioGroupTabs) FIELD(R, List<NVMFormula>, formulaTabs)
// clang-format on

/// The tabs of one signer, a list a kind.
struct NVMTabs {
    NORVANE_RECORD(NVMTabs, NVM_TABS_FIELDS)

    NVMTabs() = default;
    explicit NVMTabs(const NVMCDTabs& stored);
    explicit NVMTabs(const NVESTabs& wire);
    /// An independent copy: new tabs with new sub-records. A list absent there is absent here.
    static std::shared_ptr<NVMTabs> withTabs(const NVMTabs& tabs);

    /// Every tab of every list, groups as their radios. The order is that of the lists in the table.
    TabList allTabs() const;
    /// Appends the tab to the list of its kind, which its class tells, not its `tabType`. False for a radio,
    /// which belongs into a group, and for a plain NVMTab.
    bool addTab(const std::shared_ptr<NVMTab>& tab);
    /// Takes that very object out of its list or group; a group left without radios goes too. False when it
    /// is not here.
    bool removeTab(const std::shared_ptr<NVMTab>& tab);

    /// The kinds ("Company", "Checkbox", "DateSigned", "FullName", "InitialHere", "SignHere", "Text",
    /// "Title") whose list holds a tab of type 0, in no promised order. Radio groups and formula tabs are not
    /// inspected, deliberately. None for null.
    static std::vector<std::string> unsupportedTabTypes(const NVMTabs* tabs);
};

} // namespace norvane
