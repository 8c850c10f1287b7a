#include "src/model/IndependentCopy.h"
#include "src/model/TabKinds.h"

#include <norvane/model/NVMTabs.h>

#include <algorithm>

namespace norvane {

NORVANE_TABLE(NVMTabs, NVM_TABS_FIELDS)

std::shared_ptr<NVMTabs> NVMTabs::withTabs(const NVMTabs& tabs) {
    return independentCopy().make<NVMTabs>(tabs);
}

TabList NVMTabs::allTabs() const {
    TabList tabs;
    for (const TabKind& kind : tabKinds())
        if (kind.append) kind.append(*this, tabs);
    return tabs;
}

bool NVMTabs::addTab(const std::shared_ptr<NVMTab>& tab) {
    const auto kinds = tabKinds();
    return tab && std::any_of(kinds.begin(), kinds.end(),
                              [&](const TabKind& kind) { return kind.add && kind.add(*this, tab); });
}

bool NVMTabs::removeTab(const std::shared_ptr<NVMTab>& tab) {
    const auto kinds = tabKinds();
    return tab && std::any_of(kinds.begin(), kinds.end(),
                              [&](const TabKind& kind) { return kind.remove && kind.remove(*this, *tab); });
}

std::vector<std::string> NVMTabs::unsupportedTabTypes(const NVMTabs* tabs) {
    std::vector<std::string> names;
    if (!tabs) return names;
    for (const TabKind& kind : tabKinds()) {
        if (kind.unsupportedName.empty()) continue;
        TabList list;
        kind.append(*tabs, list);
        if (std::any_of(list.begin(), list.end(),
                        [](const auto& tab) { return tab->tabType == NVMTabTypeUnsupported; }))
            names.emplace_back(kind.unsupportedName);
    }
    return names;
}

} // namespace norvane
