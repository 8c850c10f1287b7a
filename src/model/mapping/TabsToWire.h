#pragma once

#include <norvane/api/NVESTabs.h>
#include <norvane/store/NVMCDTabs.h>

#include <memory>

namespace norvane {

/// The stored tabs as they are uploaded, each in the list that its stored type names.
std::shared_ptr<NVESTabs> wireTabs(const NVMCDTabs& stored);

} // namespace norvane
