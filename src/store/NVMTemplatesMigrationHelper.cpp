#include "src/store/Model.h"
#include "src/store/StoreFile.h"

#include <norvane/platform/Platform.h>
#include <norvane/store/NVMTemplatesMigrationHelper.h>
#include <norvane/store/ObjectStore.h>

namespace norvane {

namespace {

constexpr std::string_view kFirstMapping = "NorvaneSDK1_to_NorvaneSDK2";

} // namespace

void NVMTemplatesMigrationHelper::performMigrationForStoreFileName(const std::string& fileName) {
    const Platform& platform = Platform::current();
    const auto store = platform.files->supportFolder() / fileName;
    // A store that is open fits, and a second look at its file would let go of SQLite's locks on it.
    if (const auto open = ObjectStore::defaultStore(); open && open->isOpen() && open->file() == store)
        return;
    const auto settingUp = lockForSetUp(store);
    if (!settingUp) return;
    const auto identity = identifyStoreFile(store);
    if (!identity || identity->kind != StoreFileKind::Store || identity->modelVersion >= Model::kVersion)
        return;
    NVMTemplatesMigrationHelper helper;
    NVMMHWMigrationManager manager;
    manager.delegate = &helper;
    if (const auto error = manager.progressivelyMigrate(store, Model::kVersion))
        platform.log->write(LogLevel::Warning, "store migration: " + error->localizedDescription());
}

std::vector<MappingModel> NVMTemplatesMigrationHelper::mappingModelsForSourceModel(int sourceVersion) {
    std::vector<MappingModel> chosen;
    if (sourceVersion != 1) return chosen;
    for (auto& mapping : NVMMHWMigrationManager::kitMappingModels())
        if (mapping.name.find(kFirstMapping) != std::string::npos) chosen.push_back(std::move(mapping));
    return chosen;
}

} // namespace norvane
