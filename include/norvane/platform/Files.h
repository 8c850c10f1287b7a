#pragma once

#include <norvane/platform/Data.h>
#include <norvane/platform/Result.h>

#include <cstdint>
#include <filesystem>
#include <functional>

namespace norvane {

/// Domain of file errors; the code is errno.
inline constexpr std::string_view kFileErrorDomain = "NorvaneFileErrorDomain";
/// User-information key of a file error: the path that could not be used.
inline constexpr std::string_view kFilePathKey = "path";

/// The application's folders and durable, protected writes. Any thread may call; calls block. Folders are
/// made 0700 and files 0600; symbolic links are not followed by writes and removals.
class Files {
  public:
    virtual ~Files() = default;

    virtual std::filesystem::path documentsFolder() const = 0; ///< document files
    virtual std::filesystem::path supportFolder() const = 0;   ///< the store
    virtual std::filesystem::path cachesFolder() const = 0;    ///< may be emptied at any time
    virtual std::filesystem::path temporaryFolder() const = 0; ///< downloads; same file system as documents

    /// Makes the folder; its parent must exist. One that is there already is no error.
    virtual Failure createFolder(const std::filesystem::path& folder) = 0;
    /// Atomic and durable: written beside, synced, renamed, folder synced. After an error nothing but the
    /// earlier file, if any, is there.
    virtual Failure write(const std::filesystem::path& file, const Data& bytes) = 0;
    /// Brings an existing file to a new name, durably, as a hard link or, across file systems, as a copy.
    /// The source stays.
    virtual Failure linkOrCopy(const std::filesystem::path& from, const std::filesystem::path& to) = 0;
    /// Moves a file durably, across file systems if need be, and gives it the protected mode.
    virtual Failure move(const std::filesystem::path& from, const std::filesystem::path& to) = 0;
    /// The file's bytes; files over 1 GiB are refused.
    virtual Result<Data> read(const std::filesystem::path& file) const = 0;
    /// Lower-case hexadecimal SHA-256 of the file's bytes, read piecewise.
    virtual Result<std::string> sha256(const std::filesystem::path& file) const = 0;
    /// Removes a file, or a folder with all it holds; answers whether it was there and is gone.
    virtual bool remove(const std::filesystem::path& path) = 0;
};

/// Lower-case hexadecimal SHA-256.
std::string sha256Hex(std::string_view bytes);

} // namespace norvane
