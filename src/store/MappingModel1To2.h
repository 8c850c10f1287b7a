#pragma once

#include "src/store/Schema.h"

#include <norvane/store/NVMMHWMigrationManager.h>

#include <optional>
#include <set>
#include <string>

namespace norvane {

/// How one entity of the earlier model becomes one of the later.
struct EntityMapping {
    std::set<std::string> sourceColumns;
    const Schema::Table* destination;
    int modelVersion; ///< "modelVersion" of the mapping's user information
};

/// Says what an attribute of the migrated row holds, as an expression over the earlier row. This one, the
/// standard policy, copies what is like-named. References and positions never go through it.
class EntityMigrationPolicy {
  public:
    virtual ~EntityMigrationPolicy() = default;
    virtual std::optional<std::string> valueOf(const std::string& attribute,
                                               const EntityMapping& mapping) const;
};

/// Tabs of version 2 align "left", whatever number an earlier tab held; one that held nothing holds nothing.
class NVMCDTabAnchorHorizontalAlignmentMigrationPolicy final : public EntityMigrationPolicy {
  public:
    std::optional<std::string> valueOf(const std::string& attribute,
                                       const EntityMapping& mapping) const override;
};

/// "NorvaneSDK1_to_NorvaneSDK2".
MappingModel mappingModel1To2();

} // namespace norvane
