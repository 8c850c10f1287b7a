#include "src/platform/DurableFile.h"

#include <norvane/platform/Files.h>

#include <fcntl.h>
#include <stdio.h>
#include <sys/random.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace norvane {

namespace {

Result<FileDescriptor> openParent(const std::filesystem::path& path) {
    std::filesystem::path folder = path.parent_path();
    if (folder.empty()) folder = ".";
    FileDescriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!descriptor.isOpen()) return fileError(errno, folder);
    return descriptor;
}

std::string freshName() {
    unsigned long long number = 0;
    if (getrandom(&number, sizeof number, 0) != sizeof number)
        number = static_cast<unsigned long long>(getpid());
    char name[40];
    snprintf(name, sizeof name, ".norvane-%016llx.tmp", number);
    return name;
}

Failure sync(const FileDescriptor& descriptor, const std::filesystem::path& path) {
    if (fsync(descriptor.get()) != 0) return fileError(errno, path);
    return std::nullopt;
}

} // namespace

NVMError fileError(int code, const std::filesystem::path& path) {
    NVMError error = NVMError::make(std::string(kFileErrorDomain), code,
                                    std::string(std::strerror(code)) + ": " + path.filename().string());
    error.userInfo.emplace(kFilePathKey, path.string());
    return error;
}

Result<FileDescriptor> openForReading(const std::filesystem::path& file, bool followLinks) {
    FileDescriptor descriptor(
        open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | (followLinks ? 0 : O_NOFOLLOW)));
    if (!descriptor.isOpen()) return fileError(errno, file);
    struct stat status {};
    if (fstat(descriptor.get(), &status) != 0) return fileError(errno, file);
    if (S_ISDIR(status.st_mode)) return fileError(EISDIR, file);
    if (!S_ISREG(status.st_mode)) return fileError(EINVAL, file);
    return descriptor;
}

Result<std::size_t> readSome(const FileDescriptor& file, void* buffer, std::size_t capacity,
                             const std::filesystem::path& path) {
    std::size_t filled = 0;
    while (filled < capacity) {
        const ssize_t count = read(file.get(), static_cast<char*>(buffer) + filled, capacity - filled);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return fileError(errno, path);
        if (count == 0) break;
        filled += static_cast<std::size_t>(count);
    }
    return filled;
}

Result<std::string> readWhole(const std::filesystem::path& file, std::size_t limit) {
    const auto descriptor = openForReading(file, true);
    if (!descriptor) return descriptor.error();
    struct stat status {};
    if (fstat(descriptor->get(), &status) != 0) return fileError(errno, file);
    const auto size = static_cast<std::size_t>(status.st_size);
    if (size > limit) return fileError(EFBIG, file);
    std::string bytes(size, '\0');
    const auto count = readSome(*descriptor, bytes.data(), size, file);
    if (!count) return count.error();
    bytes.resize(*count);
    return bytes;
}

Failure writeDurably(const std::filesystem::path& file, std::string_view bytes) {
    auto pending = PendingFile::create(file);
    if (!pending) return pending.error();
    if (auto error = pending->write(bytes)) return error;
    return pending->publish();
}

Failure syncParent(const std::filesystem::path& path) {
    const auto folder = openParent(path);
    if (!folder) return folder.error();
    return sync(*folder, path.parent_path());
}

PendingFile::PendingFile(FileDescriptor folder, std::string name, std::filesystem::path target)
    : folder_(std::move(folder))
    , name_(std::move(name))
    , target_(std::move(target)) {}

Result<PendingFile> PendingFile::create(const std::filesystem::path& target) {
    auto folder = openParent(target);
    if (!folder) return folder.error();
    PendingFile pending(std::move(*folder), freshName(), target);
    pending.file_ = FileDescriptor(openat(pending.folder_.get(), pending.name_.c_str(),
                                          O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (!pending.file_.isOpen()) return fileError(errno, target);
    return pending;
}

Result<PendingFile> PendingFile::link(const std::filesystem::path& source,
                                      const std::filesystem::path& target) {
    auto file = openForReading(source, false);
    if (!file) return file.error();
    auto folder = openParent(target);
    if (!folder) return folder.error();
    PendingFile pending(std::move(*folder), freshName(), target);
    pending.file_ = std::move(*file);
    if (linkat(AT_FDCWD, source.c_str(), pending.folder_.get(), pending.name_.c_str(), 0) != 0) {
        return fileError(errno, target);
    }
    return pending;
}

PendingFile::~PendingFile() {
    // Also after publishing: a rename onto another link of the same file leaves both names.
    if (folder_.isOpen()) unlinkat(folder_.get(), name_.c_str(), 0);
}

Failure PendingFile::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(file_.get(), bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return fileError(errno, target_);
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return std::nullopt;
}

Failure PendingFile::publish() {
    if (auto error = sync(file_, target_)) return error;
    const std::string finalName = target_.filename();
    if (renameat(folder_.get(), name_.c_str(), folder_.get(), finalName.c_str()) != 0) {
        return fileError(errno, target_);
    }
    return sync(folder_, target_.parent_path());
}

} // namespace norvane
