#include "src/store/Sessions.h"

#include <norvane/platform/Platform.h>

#include <system_error>
#include <utility>

namespace norvane {

Session::Session(std::filesystem::path folder, std::string identifier, FileLock lock)
    : folder_(std::move(folder))
    , identifier_(std::move(identifier))
    , lock_(std::move(lock)) {}

Session::Session(Session&& other) noexcept
    : folder_(std::move(other.folder_))
    , identifier_(std::exchange(other.identifier_, {}))
    , lock_(std::move(other.lock_)) {}

Result<Session> Session::begin(const std::filesystem::path& storeFile) {
    const Platform& platform = Platform::current();
    auto folder = storeFile;
    folder += ".sessions";
    if (auto error = platform.files->createFolder(folder)) return *error;
    auto identifier = platform.random->uuidString();
    auto lock = FileLock::acquire(folder / (identifier + ".lock"));
    if (!lock) return lock.error();
    return Session(std::move(folder), std::move(identifier), std::move(lock).value());
}

Session::~Session() {
    if (identifier_.empty()) return; // moved from
    std::error_code ignored;         // a file left behind is cleared by the next set-up
    std::filesystem::remove(fileOf(identifier_), ignored);
}

bool Session::isAlive(const std::string& identifier) const {
    if (identifier == identifier_) return true;
    std::error_code ignored;
    return std::filesystem::exists(fileOf(identifier), ignored) && !FileLock::tryAcquire(fileOf(identifier));
}

bool Session::clearEnded() const {
    bool anotherLives = false;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder_, error)) {
        if (entry.path() == fileOf(identifier_)) continue;
        if (!FileLock::tryAcquire(entry.path())) {
            anotherLives = true;
            continue;
        }
        std::error_code ignored;
        std::filesystem::remove(entry.path(), ignored);
    }
    return anotherLives;
}

} // namespace norvane
