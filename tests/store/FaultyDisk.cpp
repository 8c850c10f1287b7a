#include "tests/store/FaultyDisk.h"

#include <sqlite3.h>

#include <cstring>

namespace norvane {

namespace {

std::function<int(std::string_view)> beforeCall;
sqlite3_vfs* disk = nullptr; ///< the real one

/// The real file lies right behind.
struct File {
    sqlite3_file base;
    sqlite3_file* real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

sqlite3_file* real(sqlite3_file* file) { return reinterpret_cast<File*>(file)->real(); }

int write(sqlite3_file* file, const void* bytes, int size, sqlite3_int64 offset) {
    const int fault = beforeCall("write");
    return fault != SQLITE_OK ? fault : real(file)->pMethods->xWrite(real(file), bytes, size, offset);
}
int sync(sqlite3_file* file, int flags) {
    const int fault = beforeCall("sync");
    return fault != SQLITE_OK ? fault : real(file)->pMethods->xSync(real(file), flags);
}
int truncate(sqlite3_file* file, sqlite3_int64 size) {
    const int fault = beforeCall("truncate");
    return fault != SQLITE_OK ? fault : real(file)->pMethods->xTruncate(real(file), size);
}
int remove(sqlite3_vfs*, const char* name, int syncFolder) {
    const int fault = beforeCall("delete");
    return fault != SQLITE_OK ? fault : disk->xDelete(disk, name, syncFolder);
}

const sqlite3_io_methods kMethods = {
    2,
    [](sqlite3_file* f) { return real(f)->pMethods->xClose(real(f)); },
    [](sqlite3_file* f, void* to, int size, sqlite3_int64 at) {
        return real(f)->pMethods->xRead(real(f), to, size, at);
    },
    &write,
    &truncate,
    &sync,
    [](sqlite3_file* f, sqlite3_int64* size) { return real(f)->pMethods->xFileSize(real(f), size); },
    [](sqlite3_file* f, int level) { return real(f)->pMethods->xLock(real(f), level); },
    [](sqlite3_file* f, int level) { return real(f)->pMethods->xUnlock(real(f), level); },
    [](sqlite3_file* f, int* result) { return real(f)->pMethods->xCheckReservedLock(real(f), result); },
    [](sqlite3_file* f, int op, void* argument) {
        return real(f)->pMethods->xFileControl(real(f), op, argument);
    },
    [](sqlite3_file* f) { return real(f)->pMethods->xSectorSize(real(f)); },
    [](sqlite3_file* f) { return real(f)->pMethods->xDeviceCharacteristics(real(f)); },
    [](sqlite3_file* f, int page, int size, int extend, void volatile** memory) {
        return real(f)->pMethods->xShmMap(real(f), page, size, extend, memory);
    },
    [](sqlite3_file* f, int offset, int n, int flags) {
        return real(f)->pMethods->xShmLock(real(f), offset, n, flags);
    },
    [](sqlite3_file* f) { real(f)->pMethods->xShmBarrier(real(f)); },
    [](sqlite3_file* f, int deletes) { return real(f)->pMethods->xShmUnmap(real(f), deletes); },
    nullptr,
    nullptr,
};

int open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    std::memset(file, 0, sizeof(File));
    const int result = disk->xOpen(disk, name, real(file), flags, outFlags);
    if (real(file)->pMethods) file->pMethods = &kMethods;
    return result;
}

sqlite3_vfs faulty;

} // namespace

FaultyDisk::FaultyDisk(std::function<int(std::string_view)> before) {
    beforeCall = std::move(before);
    disk = sqlite3_vfs_find("unix");
    faulty = *disk; // its other functions take the real one's data, which the copy shares
    faulty.zName = "faulty";
    faulty.szOsFile = static_cast<int>(sizeof(File)) + disk->szOsFile;
    faulty.xOpen = &open;
    faulty.xDelete = &remove;
    sqlite3_vfs_register(&faulty, 1);
}

FaultyDisk::~FaultyDisk() {
    sqlite3_vfs_register(disk, 1);
    sqlite3_vfs_unregister(&faulty);
}

} // namespace norvane
