#pragma once

#include <norvane/platform/Executors.h>

#include <condition_variable>
#include <mutex>
#include <utility>

namespace norvane {

/// A group that counts. What still waits when the group goes is dropped.
class CountingGroup final : public TaskGroup {
  public:
    void enter() override;
    void leave() override;
    void notify(const std::shared_ptr<TaskQueue>& queue, Task task) override;
    void wait() override;

  private:
    std::mutex mutex_; ///< guards all below
    std::condition_variable empty_;
    std::size_t count_ = 0;
    std::vector<std::pair<std::shared_ptr<TaskQueue>, Task>> waiting_;
};

} // namespace norvane
