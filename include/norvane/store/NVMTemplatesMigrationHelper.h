#pragma once

#include <norvane/store/NVMMHWMigrationManager.h>

#include <string>
#include <vector>

namespace norvane {

/// Brings the store of an earlier kit to this kit's model, at set-up, before the store is opened.
class NVMTemplatesMigrationHelper : public MigrationDelegate {
  public:
    /// Does nothing when there is no such store in the support folder, or when it fits already. A failure is
    /// not reported: opening the store tells what is wrong with it.
    static void performMigrationForStoreFileName(const std::string& fileName);

    /// For version 1, every mapping model of the kit whose name holds "NorvaneSDK1_to_NorvaneSDK2"; none
    /// else.
    std::vector<MappingModel> mappingModelsForSourceModel(int sourceVersion) override;
};

} // namespace norvane
