#include "src/platform/ThreadQueue.h"

#include <norvane/platform/NVMException.h>

#include <pthread.h>

#include <condition_variable>
#include <deque>
#include <future>
#include <mutex>

namespace norvane {

struct ThreadQueue::State {
    std::mutex mutex; ///< guards all below
    std::condition_variable changed;
    std::deque<Task> tasks;
    bool closed = false;

    void run() noexcept {
        std::unique_lock lock(mutex);
        for (;;) {
            changed.wait(lock, [this] { return closed || !tasks.empty(); });
            if (closed) return;
            Task task = std::move(tasks.front());
            tasks.pop_front();
            lock.unlock();
            task();
            task = nullptr;
            lock.lock();
        }
    }
};

ThreadQueue::ThreadQueue(std::string label)
    : state_(std::make_shared<State>()) {
    thread_ = std::thread([state = state_, label = std::move(label)] {
        pthread_setname_np(pthread_self(), label.substr(0, 15).c_str());
        state->run();
    });
}

ThreadQueue::~ThreadQueue() {
    std::deque<Task> dropped;
    {
        const std::lock_guard lock(state_->mutex);
        state_->closed = true;
        dropped.swap(state_->tasks);
    }
    state_->changed.notify_all();
    dropped.clear(); // without the lock: a task may own anything
    if (isCurrent()) {
        thread_.detach();
    } else {
        thread_.join();
    }
}

void ThreadQueue::async(Task task) {
    const auto state = state_; // the task may end this object before the call returns
    const std::lock_guard lock(state->mutex);
    if (state->closed) return;
    state->tasks.push_back(std::move(task));
    state->changed.notify_one();
}

void ThreadQueue::sync(const Task& task) {
    if (isCurrent()) throw NVMException("InvalidQueueUse", "sync on the main queue from the main queue");
    // A task that is dropped breaks its promise, which ends the wait with an exception.
    const auto job = std::make_shared<std::packaged_task<void()>>(task);
    auto done = job->get_future();
    async([job] { (*job)(); });
    done.get();
}

bool ThreadQueue::isCurrent() const { return thread_.get_id() == std::this_thread::get_id(); }

} // namespace norvane
