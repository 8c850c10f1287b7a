#pragma once

#include <norvane/platform/Result.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace norvane {

/// Domain of migration errors; their code is 8001.
inline constexpr std::string_view kMigrationErrorDomain = "NorvaneMigrationErrorDomain";
inline constexpr std::int64_t kMigrationErrorCode = 8001;

/// Makes a store of a later model out of one of an earlier.
struct MappingModel {
    std::string name; ///< "NorvaneSDK1_to_NorvaneSDK2"
    int sourceVersion;
    int destinationVersion;
    /// Writes the new store to the second path, which is free, from the one at the first, which it leaves
    /// alone. May report its progress, from 0 to 1.
    std::function<Failure(const std::filesystem::path&, const std::filesystem::path&,
                          const std::function<void(double)>&)>
        migrate;
};

/// The name of a version of the model: "NorvaneSDK" for version 1, which is where the name began, and
/// "NorvaneSDK 2".
std::string modelNameOfVersion(int version);

/// The folder beside the store that keeps the stores that migrations replaced.
std::filesystem::path earlierStoresFolder(const std::filesystem::path& store);

/// Told what a migration does, and may choose how.
class MigrationDelegate {
  public:
    virtual ~MigrationDelegate() = default;
    /// Mapping models to use, one after another, in place of the one found; none to use that.
    virtual std::vector<MappingModel> mappingModelsForSourceModel(int sourceVersion) = 0;
    virtual void migrationProgress(double) {}
};

/// Migrates a store one version after another.
class NVMMHWMigrationManager {
  public:
    /// `mappingModels` are those of the kit, in the order in which they are tried.
    explicit NVMMHWMigrationManager(std::vector<MappingModel> mappingModels = kitMappingModels())
        : mappingModels_(std::move(mappingModels)) {}
    static std::vector<MappingModel> kitMappingModels();

    MigrationDelegate* delegate = nullptr; ///< outlives the migration

    /// Until the store fits the version. The earlier store is kept under a fresh name in a folder beside the
    /// store (`earlierStoresFolder`). At every moment the store's own name leads to the earlier store or to
    /// the later one, whole; an error leaves the store as the last complete step made it. Nobody else may
    /// have the store open.
    Failure progressivelyMigrate(const std::filesystem::path& store, int toVersion);

  private:
    Failure migrateStep(const std::filesystem::path& store, const MappingModel& mapping);
    std::vector<MappingModel> mappingsFrom(int version);

    std::vector<MappingModel> mappingModels_;
};

} // namespace norvane
