#include "src/model/TabKinds.h"

#include <norvane/platform/Platform.h>

#include <algorithm>

namespace norvane {
namespace {

template <class T>
bool removeFrom(field::List<T>& list, const NVMTab& tab) {
    return list && std::erase_if(*list, [&](const auto& item) { return item.get() == &tab; }) != 0;
}

template <class T, field::List<T> NVMTabs::*LIST>
constexpr TabKind listed(NVMTabType type, std::string_view unsupportedName, std::string_view nameKey,
                         Size size) {
    return {type,
            unsupportedName,
            nameKey,
            size,
            [](const NVMTabs& tabs, TabList& to) {
                if (const auto& list = tabs.*LIST) to.insert(to.end(), list->begin(), list->end());
            },
            [](NVMTabs& tabs, const std::shared_ptr<NVMTab>& tab) {
                if (&tab->recordType() != &T::type()) return false;
                auto& list = tabs.*LIST;
                if (!list) list.emplace();
                list->push_back(std::static_pointer_cast<T>(tab));
                return true;
            },
            [](NVMTabs& tabs, const NVMTab& tab) { return removeFrom(tabs.*LIST, tab); }};
}

void appendRadios(const NVMTabs& tabs, TabList& to) {
    if (!tabs.radioGroupTabs) return;
    for (const auto& group : *tabs.radioGroupTabs)
        if (group->radios) to.insert(to.end(), group->radios->begin(), group->radios->end());
}

bool removeRadio(NVMTabs& tabs, const NVMTab& tab) {
    if (!tabs.radioGroupTabs) return false;
    auto& groups = *tabs.radioGroupTabs;
    for (auto group = groups.begin(); group != groups.end(); ++group) {
        if (!removeFrom((*group)->radios, tab)) continue;
        if ((*group)->radios->empty()) groups.erase(group);
        return true;
    }
    return false;
}

constexpr Size kTextSize{84, 18};
constexpr Size kBoxSize{17, 17};
constexpr Size kSignHereSize{53, 45};
/// Deliberately taller than it is wide.
constexpr Size kInitialHereSize{36, 50};

constexpr TabKind kKinds[] = {
    listed<NVMSignHere, &NVMTabs::signHereTabs>(NVMTabTypeSignHere, "SignHere", "Tagging.TagName.SignHere",
                                                kSignHereSize),
    listed<NVMInitialHere, &NVMTabs::initialHereTabs>(NVMTabTypeInitialHere, "InitialHere",
                                                      "Tagging.TagName.InitialHere", kInitialHereSize),
    listed<NVMFullName, &NVMTabs::fullNameTabs>(NVMTabTypeFullName, "FullName", "Common.FullName", kTextSize),
    listed<NVMDateSigned, &NVMTabs::dateSignedTabs>(NVMTabTypeDateSigned, "DateSigned", "Signing.DateSigned",
                                                    kTextSize),
    listed<NVMCompany, &NVMTabs::companyTabs>(NVMTabTypeCompany, "Company", "Common.Company", kTextSize),
    listed<NVMTitle, &NVMTabs::titleTabs>(NVMTabTypeTitle, "Title", "General.Title", kTextSize),
    listed<NVMText, &NVMTabs::textTabs>(NVMTabTypeText, "Text", "General.Text", kTextSize),
    listed<NVMCheckbox, &NVMTabs::checkboxTabs>(NVMTabTypeCheckbox, "Checkbox", "SigningPalette.checkbox",
                                                kBoxSize),
    {NVMTabTypeRadio, "", "SigningPalette.radio", kBoxSize, appendRadios,
     [](NVMTabs&, const std::shared_ptr<NVMTab>&) { return false; }, removeRadio},
    listed<NVMFormula, &NVMTabs::formulaTabs>(NVMTabTypeFormula, "", "Common.Formula", kTextSize),
    {NVMTabTypeUnsupported, "", "Tagging.TagName.Unsupported", {0, 0}, nullptr, nullptr, nullptr},
};

} // namespace

std::span<const TabKind> tabKinds() { return kKinds; }

const TabKind* tabKindOf(NVMTabType type) {
    const auto* kind = std::find_if(std::begin(kKinds), std::end(kKinds),
                                    [&](const TabKind& row) { return row.type == type; });
    return kind == std::end(kKinds) ? nullptr : kind;
}

std::optional<std::string> nameForTagType(NVMTagType type) {
    const TabKind* kind = tabKindOf(type);
    if (!kind) return std::nullopt;
    return Platform::current().strings->text(kind->nameKey);
}

Size defaultSizeForTagType(NVMTagType type) {
    const TabKind* kind = tabKindOf(type);
    return kind ? kind->defaultSize : kSignHereSize;
}

} // namespace norvane
