#pragma once

#include "src/platform/FileLock.h"

#include <norvane/platform/Result.h>

#include <filesystem>
#include <string>

namespace norvane {

/// Tells which processes with the store open still live: each holds the lock of a file of its own, which the
/// system lets go when the process ends in whatever way.
class Session {
  public:
    /// Begins a session beside the store's file. Only while the store's set-up lock is held.
    static Result<Session> begin(const std::filesystem::path& storeFile);
    ~Session();
    Session(Session&& other) noexcept;
    Session& operator=(Session&&) = delete;

    const std::string& identifier() const { return identifier_; }
    /// Whether the session of that identifier has a living process. Only while the set-up lock is held.
    bool isAlive(const std::string& identifier) const;
    /// Removes the files of ended sessions and answers whether another session lives.
    bool clearEnded() const;

  private:
    Session(std::filesystem::path folder, std::string identifier, FileLock lock);
    std::filesystem::path fileOf(const std::string& identifier) const {
        return folder_ / (identifier + ".lock");
    }

    std::filesystem::path folder_;
    std::string identifier_;
    FileLock lock_;
};

} // namespace norvane
