#pragma once

#include <functional>
#include <string_view>

namespace norvane {

/// Stands between SQLite and the disk for every store opened while it lives. One at a time.
class FaultyDisk {
  public:
    /// Called before each "write", "sync", "truncate" and "delete"; an SQLite result code other than 0 is the
    /// call's result. Any thread.
    explicit FaultyDisk(std::function<int(std::string_view call)> before);
    ~FaultyDisk();
    FaultyDisk(const FaultyDisk&) = delete;
    FaultyDisk& operator=(const FaultyDisk&) = delete;
};

} // namespace norvane
