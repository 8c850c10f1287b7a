#pragma once

#include "src/platform/FileDescriptor.h"

#include <norvane/platform/Result.h>

#include <filesystem>
#include <optional>

namespace norvane {

/// Keeps other processes, and other threads of this one, out while it lives. Not recursive.
class FileLock {
  public:
    /// Waits for the lock; makes its file when there is none.
    static Result<FileLock> acquire(const std::filesystem::path& file);
    /// The same without waiting; nothing when somebody else holds the lock or there is no such file.
    static std::optional<FileLock> tryAcquire(const std::filesystem::path& file);

  private:
    explicit FileLock(FileDescriptor file)
        : file_(std::move(file)) {}
    FileDescriptor file_;
};

} // namespace norvane
