#pragma once

#include <norvane/platform/Reachability.h>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace norvane {

/// Who watches a status, and what each was told last. One thread, the monitor's, calls `tell`; the rest may
/// be called by any.
class StatusObservers {
  public:
    /// When the token's destruction returns, the callback does not run and never will; inside the callback
    /// itself, it never will again. The monitor must call `tell` soon.
    std::shared_ptr<void> add(Reachability::Callback callback);
    /// Calls everybody who was not told this status last.
    void tell(int status);

  private:
    struct Observer {
        Reachability::Callback callback;
        std::mutex mutex; ///< guards what follows; not held during the callback
        std::condition_variable returned;
        std::optional<int> told;
        std::optional<std::thread::id> runningOn;
        bool removed = false;
    };
    static void remove(Observer& observer);
    static void call(Observer& observer, int status);

    std::mutex mutex_;
    std::vector<std::weak_ptr<Observer>> observers_; ///< guarded by mutex_
};

} // namespace norvane
