#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace norvane {

/// How long a test waits for something that always happens.
inline constexpr std::chrono::seconds kTestPatience{20};

/// Something that a test waits for. Several `set` count.
class Event {
  public:
    void set() {
        const std::lock_guard lock(mutex_);
        ++count_;
        changed_.notify_all();
    }
    /// Whether it was set so many times in time.
    [[nodiscard]] bool wait(int count = 1) {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, kTestPatience, [&] { return count_ >= count; });
    }
    bool isSet() {
        const std::lock_guard lock(mutex_);
        return count_ > 0;
    }

  private:
    std::mutex mutex_; ///< guards `count_`
    std::condition_variable changed_;
    int count_ = 0;
};

} // namespace norvane
