#pragma once

#include <cstddef>
#include <filesystem>

#include <norvane/platform/Result.h>

namespace norvane {

/// A fresh file that only its owner may read. It is removed again unless it is kept.
class DownloadFile {
  public:
    /// Errors carry errno as their code, in the domain of file errors.
    static Result<DownloadFile> create(const std::filesystem::path& folder);
    DownloadFile(DownloadFile&& other) noexcept;
    DownloadFile& operator=(DownloadFile&&) = delete;
    ~DownloadFile();

    Failure append(const char* bytes, std::size_t size);
    /// Closes the file and leaves it to the caller.
    Result<std::filesystem::path> keep();

  private:
    DownloadFile(int descriptor, std::filesystem::path path);
    int descriptor_;
    std::filesystem::path path_;
};

} // namespace norvane
