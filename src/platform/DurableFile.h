#pragma once

#include "src/platform/FileDescriptor.h"

#include <norvane/platform/Result.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace norvane {

/// The error of a system call on the path; `code` is errno.
NVMError fileError(int code, const std::filesystem::path& path);

/// A regular file to read; symbolic links are refused unless `followLinks`. Never blocks on pipes and
/// devices: they are refused.
Result<FileDescriptor> openForReading(const std::filesystem::path& file, bool followLinks);

/// Fills the buffer as far as the file goes and answers how many bytes came; 0 at its end.
Result<std::size_t> readSome(const FileDescriptor& file, void* buffer, std::size_t capacity,
                             const std::filesystem::path& path);

/// All bytes; a file of more than `limit` bytes gives EFBIG.
Result<std::string> readWhole(const std::filesystem::path& file, std::size_t limit);

/// Replaces the file by these bytes, as `Files::write` does.
Failure writeDurably(const std::filesystem::path& file, std::string_view bytes);

/// Syncs the folder that holds the path, so that the path's name survives a crash.
Failure syncParent(const std::filesystem::path& path);

/// A file in the making, beside the name that it shall have. Unless it is published it goes away again.
class PendingFile {
  public:
    /// Empty, mode 0600, to be filled through `write`.
    static Result<PendingFile> create(const std::filesystem::path& target);
    /// A hard link of an existing file.
    static Result<PendingFile> link(const std::filesystem::path& source, const std::filesystem::path& target);

    PendingFile(PendingFile&& other) noexcept = default;
    PendingFile& operator=(PendingFile&&) = delete;
    ~PendingFile();

    Failure write(std::string_view bytes);
    /// Syncs the file, gives it its name, replacing what had it, and syncs the folder.
    Failure publish();

  private:
    PendingFile(FileDescriptor folder, std::string name, std::filesystem::path target);

    FileDescriptor folder_;
    FileDescriptor file_;
    std::string name_;
    std::filesystem::path target_;
};

} // namespace norvane
