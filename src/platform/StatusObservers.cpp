#include "src/platform/StatusObservers.h"

namespace norvane {

std::shared_ptr<void> StatusObservers::add(Reachability::Callback callback) {
    auto observer = std::make_shared<Observer>();
    observer->callback = std::move(callback);
    const std::lock_guard lock(mutex_);
    observers_.push_back(observer);
    return std::shared_ptr<void>(observer.get(), [observer](void*) { remove(*observer); });
}

void StatusObservers::tell(int status) {
    std::vector<std::shared_ptr<Observer>> present;
    {
        const std::lock_guard lock(mutex_);
        std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
        for (const auto& observer : observers_)
            if (auto alive = observer.lock()) present.push_back(std::move(alive));
    }
    for (const auto& observer : present)
        call(*observer, status);
}

void StatusObservers::call(Observer& observer, int status) {
    {
        const std::lock_guard lock(observer.mutex);
        if (observer.removed || observer.told == status) return;
        observer.told = status;
        observer.runningOn = std::this_thread::get_id();
    }
    observer.callback(status);
    {
        const std::lock_guard lock(observer.mutex);
        observer.runningOn.reset();
    }
    observer.returned.notify_all();
}

void StatusObservers::remove(Observer& observer) {
    std::unique_lock lock(observer.mutex);
    observer.removed = true;
    if (observer.runningOn == std::this_thread::get_id()) return;
    observer.returned.wait(lock, [&observer] { return !observer.runningOn; });
}

} // namespace norvane
