#pragma once

#include <filesystem>
#include <string_view>

namespace norvane {

/// A folder of a test's own, removed with all it holds when the test ends.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    /// Writes a file of that name and answers where it is.
    std::filesystem::path file(std::string_view name, std::string_view content) const;

  private:
    std::filesystem::path path_;
};

} // namespace norvane
