#include "src/platform/CountingGroup.h"

#include <norvane/platform/NVMException.h>

namespace norvane {

void CountingGroup::enter() {
    const std::lock_guard lock(mutex_);
    ++count_;
}

void CountingGroup::leave() {
    std::vector<std::pair<std::shared_ptr<TaskQueue>, Task>> ready;
    {
        const std::lock_guard lock(mutex_);
        if (count_ == 0) throw NVMException("InvalidGroupUse", "a group was left more often than entered");
        if (--count_ > 0) return;
        ready.swap(waiting_);
        empty_.notify_all();
    }
    for (auto& [queue, task] : ready)
        queue->async(std::move(task));
}

void CountingGroup::notify(const std::shared_ptr<TaskQueue>& queue, Task task) {
    {
        const std::lock_guard lock(mutex_);
        if (count_ > 0) {
            waiting_.emplace_back(queue, std::move(task));
            return;
        }
    }
    queue->async(std::move(task));
}

void CountingGroup::wait() {
    std::unique_lock lock(mutex_);
    empty_.wait(lock, [this] { return count_ == 0; });
}

} // namespace norvane
