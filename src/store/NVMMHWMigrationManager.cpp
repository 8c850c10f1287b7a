#include "src/store/MappingModel1To2.h"
#include "src/store/StoreFile.h"

#include <norvane/platform/Platform.h>
#include <norvane/store/NVMMHWMigrationManager.h>

#include <system_error>

namespace norvane {

namespace {

namespace fs = std::filesystem;

NVMError migrationError(std::string description) {
    return NVMError::make(std::string(kMigrationErrorDomain), kMigrationErrorCode, std::move(description));
}

/// "<store without extension>.<model>.<extension>"
fs::path destinationFor(const fs::path& store, int version) {
    auto destination = store;
    destination.replace_extension();
    destination += "." + modelNameOfVersion(version) + store.extension().string();
    return destination;
}

void removeWithJournals(const fs::path& store) {
    for (const char* suffix : {"", "-wal", "-shm", "-journal"}) {
        auto part = store;
        part += suffix;
        Platform::current().files->remove(part);
    }
}

/// What a migration that was cut short before the swap left beside the store: another name of the store
/// itself, or a name in the making.
void removeCutShort(const fs::path& folder, const fs::path& store) {
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(folder, ignored)) {
        const std::string name = entry.path().filename().string();
        if (fs::equivalent(entry.path(), store, ignored) || name.starts_with(".norvane-"))
            Platform::current().files->remove(entry.path());
    }
}

/// The earlier store gets a second name aside before the new one takes its place: at every moment the store's
/// own name leads to one of them, whole.
Failure swap(const fs::path& store, const fs::path& destination) {
    const Platform& platform = Platform::current();
    const auto folder = earlierStoresFolder(store);
    if (auto error = platform.files->createFolder(folder)) return error;
    removeCutShort(folder, store);
    const auto aside = folder / (platform.random->uuidString() + store.extension().string());
    if (auto error = platform.files->linkOrCopy(store, aside)) return error;
    return platform.files->move(destination, store);
}

} // namespace

std::string modelNameOfVersion(int version) {
    return version == 1 ? "NorvaneSDK" : "NorvaneSDK " + std::to_string(version);
}

std::filesystem::path earlierStoresFolder(const std::filesystem::path& store) {
    auto folder = store;
    folder += ".earlier";
    return folder;
}

std::vector<MappingModel> NVMMHWMigrationManager::kitMappingModels() { return {mappingModel1To2()}; }

std::vector<MappingModel> NVMMHWMigrationManager::mappingsFrom(int version) {
    if (delegate)
        if (auto chosen = delegate->mappingModelsForSourceModel(version); !chosen.empty()) return chosen;
    for (const auto& mapping : mappingModels_)
        if (mapping.sourceVersion == version) return {mapping};
    return {};
}

Failure NVMMHWMigrationManager::progressivelyMigrate(const std::filesystem::path& store, int toVersion) {
    for (;;) {
        const auto identity = identifyStoreFile(store);
        if (!identity) return identity.error();
        if (identity->kind != StoreFileKind::Store) return migrationError("No models found!");
        if (identity->modelVersion == toVersion) return std::nullopt;
        const auto mappings = mappingsFrom(identity->modelVersion);
        if (mappings.empty()) return migrationError("No mapping model found in bundle");
        for (const auto& mapping : mappings) {
            if (mapping.destinationVersion <= identity->modelVersion)
                return migrationError("No models found!");
            if (auto error = migrateStep(store, mapping)) return error;
        }
    }
}

Failure NVMMHWMigrationManager::migrateStep(const std::filesystem::path& store, const MappingModel& mapping) {
    const auto destination = destinationFor(store, mapping.destinationVersion);
    removeWithJournals(destination); // of a migration that was cut short
    const auto progress = [this](double done) {
        if (delegate) delegate->migrationProgress(done);
    };
    Failure error = mapping.migrate(store, destination, progress);
    if (!error) error = swap(store, destination);
    if (error) removeWithJournals(destination);
    return error;
}

} // namespace norvane
