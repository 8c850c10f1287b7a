#include "tests/store/DiskLayer.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <fstream>
#include <mutex>
#include <random>

namespace norvane {

namespace {

using Kind = DiskCall::Kind;

struct Layer {
    std::string root;
    DiskLayer::Fault fault;
    std::vector<DiskCall> calls;
};

std::atomic<bool> isActive = false;
std::atomic<bool> syncsAreFree = false;
std::recursive_mutex
    mutex; ///< guards `layer`; held during each call, so that calls are logged in their order
Layer layer;

template <class Function>
Function real(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

/// The path below the root; empty for what is not the test's matter. Memory that processes share is no disk.
std::string below(const std::string& path) {
    if (!path.starts_with(layer.root + "/") || path.ends_with("-shm") || path.ends_with(" (deleted)"))
        return {};
    return path.substr(layer.root.size() + 1);
}

std::string pathOf(int descriptor) {
    char target[PATH_MAX];
    const ssize_t size =
        readlink(("/proc/self/fd/" + std::to_string(descriptor)).c_str(), target, sizeof target);
    return size > 0 ? std::string(target, static_cast<std::size_t>(size)) : "";
}

std::string pathAt(int folder, const char* name) {
    return folder == AT_FDCWD || *name == '/' ? name : pathOf(folder) + "/" + name;
}

/// Asks for a fault, calls, and logs what succeeded. `call` gives -1 when it fails.
template <class Result, class Call>
Result through(DiskCall entry, Call call) {
    std::size_t size = entry.bytes.size();
    const int fault = layer.fault ? layer.fault(entry, size) : 0;
    if (fault != 0 && (entry.kind != Kind::Write || size == 0)) {
        errno = fault;
        return -1;
    }
    const Result result = call(size);
    if (result < 0) return result;
    if (entry.kind == Kind::Write) entry.bytes.resize(static_cast<std::size_t>(result));
    layer.calls.push_back(std::move(entry));
    return result;
}

/// The same for a call that changes names.
template <class Call>
int throughNames(Kind kind, const std::string& path, const std::string& to, Call call) {
    const std::lock_guard lock(mutex);
    const std::string from = below(path), target = below(to);
    if (!isActive || (from.empty() && target.empty())) return call();
    return through<int>({kind, from, target, 0, {}}, [&](std::size_t) { return call(); });
}

template <class Call>
int throughDescriptor(Kind kind, int descriptor, std::int64_t offset, Call call) {
    const std::lock_guard lock(mutex);
    const std::string path = isActive ? below(pathOf(descriptor)) : "";
    if (path.empty()) return call();
    return through<int>({kind, path, {}, offset, {}}, [&](std::size_t) { return call(); });
}

template <class Call>
ssize_t throughWrite(int descriptor, const void* bytes, std::size_t size, std::int64_t offset, Call call) {
    const std::lock_guard lock(mutex);
    const std::string path = isActive ? below(pathOf(descriptor)) : "";
    if (path.empty()) return call(size);
    if (offset < 0) offset = lseek(descriptor, 0, SEEK_CUR);
    return through<ssize_t>(
        {Kind::Write, path, {}, offset, std::string(static_cast<const char*>(bytes), size)}, call);
}

int sync(int descriptor, const char* name) {
    const auto call = [&](int file) { return syncsAreFree ? 0 : real<int (*)(int)>(name)(file); };
    if (!isActive) return call(descriptor);
    struct stat status {};
    const bool isFolder = fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
    return throughDescriptor(isFolder ? Kind::SyncFolder : Kind::Sync, descriptor, 0,
                             [&] { return call(descriptor); });
}

int openAt(int folder, const char* name, int flags, mode_t mode) {
    const auto call = real<int (*)(int, const char*, int, ...)>("openat64");
    if (!isActive || (flags & O_CREAT) == 0) return call(folder, name, flags, mode);
    const std::lock_guard lock(mutex);
    const std::string path = below(pathAt(folder, name));
    if (path.empty() || faccessat(folder, name, F_OK, AT_SYMLINK_NOFOLLOW) == 0)
        return call(folder, name, flags, mode);
    return through<int>({Kind::Create, path, {}, 0, {}},
                        [&](std::size_t) { return call(folder, name, flags, mode); });
}

mode_t modeFrom(int flags, va_list arguments) {
    return (flags & O_CREAT) != 0 ? static_cast<mode_t>(va_arg(arguments, int)) : 0;
}

} // namespace

} // namespace norvane

// The program's own definitions stand before those of the C library, for the libraries that it uses too.
extern "C" {

using norvane::Kind;

ssize_t write(int descriptor, const void* bytes, std::size_t size) {
    const auto call = norvane::real<ssize_t (*)(int, const void*, std::size_t)>("write");
    if (!norvane::isActive) return call(descriptor, bytes, size);
    return norvane::throughWrite(descriptor, bytes, size, -1,
                                 [&](std::size_t count) { return call(descriptor, bytes, count); });
}
ssize_t pwrite64(int descriptor, const void* bytes, std::size_t size, off64_t offset) {
    const auto call = norvane::real<ssize_t (*)(int, const void*, std::size_t, off64_t)>("pwrite64");
    if (!norvane::isActive) return call(descriptor, bytes, size, offset);
    return norvane::throughWrite(descriptor, bytes, size, offset,
                                 [&](std::size_t count) { return call(descriptor, bytes, count, offset); });
}
int ftruncate64(int descriptor, off64_t size) noexcept {
    const auto call = norvane::real<int (*)(int, off64_t)>("ftruncate64");
    return norvane::throughDescriptor(Kind::Truncate, descriptor, size,
                                      [&] { return call(descriptor, size); });
}
int fsync(int descriptor) { return norvane::sync(descriptor, "fsync"); }
int fdatasync(int descriptor) { return norvane::sync(descriptor, "fdatasync"); }

int rename(const char* from, const char* to) noexcept {
    const auto call = norvane::real<int (*)(const char*, const char*)>("rename");
    return norvane::throughNames(Kind::Rename, from, to, [&] { return call(from, to); });
}
int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept {
    const auto call = norvane::real<int (*)(int, const char*, int, const char*)>("renameat");
    return norvane::throughNames(Kind::Rename, norvane::pathAt(fromFolder, from),
                                 norvane::pathAt(toFolder, to),
                                 [&] { return call(fromFolder, from, toFolder, to); });
}
int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept {
    const auto call = norvane::real<int (*)(int, const char*, int, const char*, int)>("linkat");
    return norvane::throughNames(Kind::Link, norvane::pathAt(fromFolder, from), norvane::pathAt(toFolder, to),
                                 [&] { return call(fromFolder, from, toFolder, to, flags); });
}
int unlink(const char* path) noexcept {
    const auto call = norvane::real<int (*)(const char*)>("unlink");
    return norvane::throughNames(Kind::Unlink, path, "", [&] { return call(path); });
}
int unlinkat(int folder, const char* path, int flags) noexcept {
    const auto call = norvane::real<int (*)(int, const char*, int)>("unlinkat");
    return norvane::throughNames(Kind::Unlink, norvane::pathAt(folder, path), "",
                                 [&] { return call(folder, path, flags); });
}
int remove(const char* path) noexcept {
    const auto call = norvane::real<int (*)(const char*)>("remove");
    return norvane::throughNames(Kind::Unlink, path, "", [&] { return call(path); });
}

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = norvane::modeFrom(flags, arguments);
    va_end(arguments);
    return norvane::openAt(AT_FDCWD, path, flags, mode);
}
int open64(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = norvane::modeFrom(flags, arguments);
    va_end(arguments);
    return norvane::openAt(AT_FDCWD, path, flags, mode);
}
int openat(int folder, const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = norvane::modeFrom(flags, arguments);
    va_end(arguments);
    return norvane::openAt(folder, path, flags, mode);
}

} // extern "C"

namespace norvane {

DiskLayer::DiskLayer(std::filesystem::path root, Fault fault) {
    const std::lock_guard lock(mutex);
    layer = {root.string(), std::move(fault), {}};
    isActive = true;
}

DiskLayer::~DiskLayer() {
    const std::lock_guard lock(mutex);
    isActive = false;
    layer = {};
}

FreeSyncs::FreeSyncs() { syncsAreFree = true; }
FreeSyncs::~FreeSyncs() { syncsAreFree = false; }

void DiskLayer::mark(const std::string& text) {
    const std::lock_guard lock(mutex);
    layer.calls.push_back({Kind::Mark, text, {}, 0, {}});
}

void DiskLayer::heal() {
    const std::lock_guard lock(mutex);
    layer.fault = {};
}

std::vector<DiskCall> DiskLayer::calls() const {
    const std::lock_guard lock(mutex);
    return layer.calls;
}

namespace {

void change(std::string& content, const DiskCall& call, std::size_t size) {
    const auto offset = static_cast<std::size_t>(call.offset);
    if (call.kind == Kind::Truncate) return content.resize(offset);
    if (content.size() < offset + size) content.resize(offset + size);
    content.replace(offset, size, call.bytes, 0, size);
}

} // namespace

void DiskImage::apply(const DiskCall& call) {
    const auto file = [&]() -> File& { return files_[names_.at(call.path)]; };
    switch (call.kind) {
    case Kind::Create:
        names_[call.path] = files_.size();
        files_.emplace_back();
        break;
    case Kind::Write:
    case Kind::Truncate:
        change(file().now, call, call.bytes.size());
        file().unsynced.push_back(call);
        break;
    case Kind::Sync:
        file().synced = file().now;
        file().unsynced.clear();
        break;
    case Kind::Rename:
        names_[call.to] = names_.at(call.path);
        names_.erase(call.path);
        break;
    case Kind::Link:
        names_[call.to] = names_.at(call.path);
        break;
    case Kind::Unlink:
        names_.erase(call.path);
        break;
    case Kind::SyncFolder: {
        const auto isIn = [&](const auto& name) {
            return std::filesystem::path(name.first).parent_path() == call.path;
        };
        std::erase_if(syncedNames_, isIn);
        for (const auto& name : names_)
            if (isIn(name)) syncedNames_.insert(name);
        break;
    }
    case Kind::Mark:
        break;
    }
}

void DiskImage::restore(const std::filesystem::path& root, After after, unsigned seed) const {
    std::mt19937 random(seed);
    for (const char* folder : {"Documents", "support"})
        std::filesystem::remove_all(root / folder);
    for (const char* folder : {"Documents", "support"})
        std::filesystem::create_directory(root / folder);
    std::map<std::size_t, std::filesystem::path> written;
    // Of names a torn disk keeps all or none, in the order in which they were given.
    const bool keepsNames = after == After::Kill || (after == After::TornWrite && random() % 2 == 0);
    for (const auto& [path, number] : keepsNames ? names_ : syncedNames_) {
        const File& file = files_[number];
        std::filesystem::create_directories((root / path).parent_path());
        if (const auto [first, isFirst] = written.emplace(number, root / path); !isFirst) {
            std::filesystem::create_hard_link(first->second, root / path);
            continue;
        }
        std::string content = after == After::Kill ? file.now : file.synced;
        if (after == After::TornWrite) {
            for (const DiskCall& call : file.unsynced)
                if (random() % 2 == 0)
                    change(content, call,
                           random() % 2 == 0 ? call.bytes.size() : call.bytes.size() / 512 / 2 * 512);
        }
        std::ofstream(root / path, std::ios::binary) << content;
    }
}

} // namespace norvane
