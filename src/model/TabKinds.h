#pragma once

#include <norvane/model/NVMTabs.h>

#include <span>
#include <string_view>

namespace norvane {

/// One row a kind of tab: what the kind is called, its default size, and its list in NVMTabs.
struct TabKind {
    NVMTabType type;
    std::string_view unsupportedName; ///< by which `unsupportedTabTypes` names it; empty: not inspected
    std::string_view nameKey;
    Size defaultSize;
    /// Appends the list's tabs. Null, as the other two, for the kind that has no list.
    void (*append)(const NVMTabs& tabs, TabList& to);
    bool (*add)(NVMTabs& tabs, const std::shared_ptr<NVMTab>& tab);
    bool (*remove)(NVMTabs& tabs, const NVMTab& tab);
};

/// In the order of the lists of NVMTabs, the kind without a list last.
std::span<const TabKind> tabKinds();
/// Null for numbers that name no kind.
const TabKind* tabKindOf(NVMTabType type);

} // namespace norvane
