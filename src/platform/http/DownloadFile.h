#pragma once

#include "src/platform/FileDescriptor.h"

#include <norvane/platform/Result.h>

#include <cstddef>
#include <filesystem>

namespace norvane {

/// A fresh file that only its owner may read. It is removed again unless it is kept.
class DownloadFile {
  public:
    /// Errors are those of files: the code is errno.
    static Result<DownloadFile> create(const std::filesystem::path& folder);
    DownloadFile(DownloadFile&&) noexcept = default;
    DownloadFile& operator=(DownloadFile&&) = delete;
    ~DownloadFile();

    Failure append(const char* bytes, std::size_t size);
    /// Closes the file and leaves it to the caller.
    std::filesystem::path keep();

  private:
    DownloadFile(FileDescriptor file, std::filesystem::path path);
    FileDescriptor file_;
    std::filesystem::path path_;
};

} // namespace norvane
