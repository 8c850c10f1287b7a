#pragma once

#include "src/platform/FileLock.h"

#include <norvane/platform/Result.h>

#include <filesystem>

namespace norvane {

/// What lies at the place of the store.
enum class StoreFileKind {
    Missing,
    Empty,   ///< a database without content, made by a process that went no further
    Foreign, ///< no database, or one of something else
    Store,
};

struct StoreFileIdentity {
    StoreFileKind kind;
    int modelVersion = 0; ///< of a store
};

/// Keeps every other set-up of that store out while it lives.
Result<FileLock> lockForSetUp(const std::filesystem::path& file);

/// Looks without changing a byte.
Result<StoreFileIdentity> identifyStoreFile(const std::filesystem::path& file);

/// Sees to it that the file is there and readable for this user alone, before SQLite gives its companions the
/// same mode.
Failure protectStoreFile(const std::filesystem::path& file);

/// Makes the tables in an empty store.
Failure createSchema(const std::filesystem::path& file, int modelVersion);

} // namespace norvane
