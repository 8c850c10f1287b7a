#include "src/platform/FileLock.h"

#include "src/platform/DurableFile.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>

namespace norvane {

Result<FileLock> FileLock::acquire(const std::filesystem::path& file) {
    FileDescriptor descriptor(open(file.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (!descriptor.isOpen()) return fileError(errno, file);
    while (flock(descriptor.get(), LOCK_EX) != 0) {
        if (errno != EINTR) return fileError(errno, file);
    }
    return FileLock(std::move(descriptor));
}

std::optional<FileLock> FileLock::tryAcquire(const std::filesystem::path& file) {
    FileDescriptor descriptor(open(file.c_str(), O_RDWR | O_NOFOLLOW | O_CLOEXEC));
    if (!descriptor.isOpen() || flock(descriptor.get(), LOCK_EX | LOCK_NB) != 0) return std::nullopt;
    return FileLock(std::move(descriptor));
}

} // namespace norvane
