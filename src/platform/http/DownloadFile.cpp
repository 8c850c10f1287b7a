#include "src/platform/http/DownloadFile.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <unistd.h>
#include <utility>

#include <norvane/platform/Files.h>

namespace norvane {
namespace {

NVMError fileError(int cause) {
    return NVMError::make(std::string(kFileErrorDomain), cause,
                          std::string("The download could not be saved: ") + std::strerror(cause) + ".");
}

} // namespace

DownloadFile::DownloadFile(int descriptor, std::filesystem::path path)
    : descriptor_(descriptor), path_(std::move(path)) {}

DownloadFile::DownloadFile(DownloadFile&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), path_(std::move(other.path_)) {}

DownloadFile::~DownloadFile() {
    if (descriptor_ < 0) return;
    ::close(descriptor_);
    ::unlink(path_.c_str());
}

Result<DownloadFile> DownloadFile::create(const std::filesystem::path& folder) {
    std::string path = (folder / "download-XXXXXX").string();
    const int descriptor = ::mkostemp(path.data(), O_CLOEXEC);
    if (descriptor < 0) return fileError(errno);
    return DownloadFile(descriptor, std::move(path));
}

Failure DownloadFile::append(const char* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t written = ::write(descriptor_, bytes, size);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return fileError(errno);
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    return std::nullopt;
}

Result<std::filesystem::path> DownloadFile::keep() {
    if (::close(std::exchange(descriptor_, -1)) != 0) {
        const int cause = errno;
        ::unlink(path_.c_str());
        return fileError(cause);
    }
    return path_;
}

} // namespace norvane
