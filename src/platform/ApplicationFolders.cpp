#include "src/platform/Adapters.h"
#include "src/platform/DurableFile.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>

namespace norvane {

namespace {

namespace fs = std::filesystem;

/// The base folder that the variable names; relative ones are to be ignored by the rules of XDG.
fs::path xdgFolder(const char* variable, std::string_view belowHome) {
    const char* named = std::getenv(variable);
    if (named && fs::path(named).is_absolute()) return named;
    const char* home = std::getenv("HOME");
    return fs::path(home ? home : "/") / belowHome;
}

/// Makes the folder and those above it, each for the user alone.
Failure makePrivateFolder(const fs::path& folder) {
    bool isMade = mkdir(folder.c_str(), 0700) == 0;
    if (!isMade && errno == ENOENT && folder.has_parent_path() && folder.parent_path() != folder) {
        if (auto error = makePrivateFolder(folder.parent_path())) return error;
        isMade = mkdir(folder.c_str(), 0700) == 0; // some file systems say ENOENT of a parent that is there
    }
    if (isMade) return syncParent(folder);
    if (errno != EEXIST) return fileError(errno, folder);
    struct stat status {};
    if (stat(folder.c_str(), &status) != 0) return fileError(errno, folder);
    if (!S_ISDIR(status.st_mode)) return fileError(ENOTDIR, folder);
    return std::nullopt;
}

bool isOnOneFileSystem(const fs::path& a, const fs::path& b) {
    struct stat first {
    }, second{};
    return stat(a.c_str(), &first) == 0 && stat(b.c_str(), &second) == 0 && first.st_dev == second.st_dev;
}

} // namespace

ApplicationFolders applicationFolders(const PlatformOptions& options) {
    if (options.home) {
        // A document's address must hold wherever the process goes.
        std::error_code unknown;
        const fs::path whole = fs::absolute(*options.home, unknown);
        const fs::path& home = unknown ? *options.home : whole;
        const fs::path caches = home / "caches";
        return {home / "Documents", home / "support", caches, caches / "tmp", home / "defaults"};
    }
    const fs::path data = xdgFolder("XDG_DATA_HOME", ".local/share") / options.applicationName;
    const fs::path caches = xdgFolder("XDG_CACHE_HOME", ".cache") / options.applicationName;
    const fs::path defaults = xdgFolder("XDG_CONFIG_HOME", ".config") / options.applicationName;
    return {data / "Documents", data / "support", caches, caches / "tmp", defaults / "defaults"};
}

Failure makeFolders(ApplicationFolders& folders) {
    for (const fs::path& folder : {folders.documents, folders.support, folders.caches, folders.defaults}) {
        if (auto error = makePrivateFolder(folder)) return error;
        if (chmod(folder.c_str(), 0700) != 0) return fileError(errno, folder);
    }
    if (!isOnOneFileSystem(folders.documents, folders.caches)) {
        folders.temporary = folders.documents.parent_path() / "tmp";
    }
    if (auto error = makePrivateFolder(folders.temporary)) return error;
    if (chmod(folders.temporary.c_str(), 0700) != 0) return fileError(errno, folders.temporary);
    return std::nullopt;
}

} // namespace norvane
