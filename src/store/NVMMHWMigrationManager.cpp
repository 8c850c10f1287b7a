#include "src/store/StoreFile.h"

#include <norvane/platform/Platform.h>
#include <norvane/store/NVMMHWMigrationManager.h>

#include <system_error>

namespace norvane {

namespace {

NVMError migrationError(std::string description) {
    return NVMError::make(std::string(kMigrationErrorDomain), kMigrationErrorCode, std::move(description));
}

/// "<store without extension>.<model>.<extension>"
std::filesystem::path destinationFor(const std::filesystem::path& store, int version) {
    auto destination = store;
    destination.replace_extension();
    destination += "." + modelNameOfVersion(version) + store.extension().string();
    return destination;
}

/// The store and the journals that belong to it.
std::vector<std::pair<std::filesystem::path, std::filesystem::path>> parts(const std::filesystem::path& from,
                                                                           const std::filesystem::path& to) {
    std::vector<std::pair<std::filesystem::path, std::filesystem::path>> parts;
    for (const char* suffix : {"", "-wal", "-shm"}) {
        auto source = from, target = to;
        source += suffix;
        target += suffix;
        std::error_code ignored;
        if (std::filesystem::exists(source, ignored)) parts.emplace_back(source, target);
    }
    return parts;
}

Failure moveStore(const std::filesystem::path& from, const std::filesystem::path& to) {
    for (const auto& [source, target] : parts(from, to))
        if (auto error = Platform::current().files->move(source, target)) return error;
    return std::nullopt;
}

} // namespace

std::string modelNameOfVersion(int version) {
    return version == 1 ? "NorvaneSDK" : "NorvaneSDK " + std::to_string(version);
}

std::vector<MappingModel> NVMMHWMigrationManager::kitMappingModels() { return {}; }

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
    const Platform& platform = Platform::current();
    const auto destination = destinationFor(store, mapping.destinationVersion);
    for (const auto& [part, unused] : parts(destination, destination))
        platform.files->remove(part); // of a migration that was cut short
    const auto progress = [this](double done) {
        if (delegate) delegate->migrationProgress(done);
    };
    if (auto error = mapping.migrate(store, destination, progress)) return error;
    const auto aside = platform.files->temporaryFolder() / platform.random->uuidString();
    if (auto error = moveStore(store, aside)) return error;
    return moveStore(destination, store);
}

} // namespace norvane
