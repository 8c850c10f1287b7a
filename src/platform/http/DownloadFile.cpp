#include "src/platform/http/DownloadFile.h"

#include "src/platform/DurableFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>

namespace norvane {

DownloadFile::DownloadFile(FileDescriptor file, std::filesystem::path path)
    : file_(std::move(file))
    , path_(std::move(path)) {}

DownloadFile::~DownloadFile() {
    if (file_.isOpen()) ::unlink(path_.c_str());
}

Result<DownloadFile> DownloadFile::create(const std::filesystem::path& folder) {
    std::string path = (folder / "download-XXXXXX").string();
    FileDescriptor file(::mkostemp(path.data(), O_CLOEXEC));
    if (!file.isOpen()) return fileError(errno, folder);
    return DownloadFile(std::move(file), std::move(path));
}

Failure DownloadFile::append(const char* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t written = ::write(file_.get(), bytes, size);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return fileError(errno, path_);
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    return std::nullopt;
}

std::filesystem::path DownloadFile::keep() {
    file_.close();
    return path_;
}

} // namespace norvane
