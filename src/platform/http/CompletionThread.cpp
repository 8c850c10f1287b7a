#include "src/platform/http/CompletionThread.h"

#include <condition_variable>
#include <deque>
#include <mutex>

namespace norvane {

struct CompletionThread::State {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> tasks; ///< guarded by mutex
    bool closed = false;                     ///< guarded by mutex

    /// Runs one task; waits for it unless the thread is closed. False when closed and empty.
    bool runNext() {
        std::function<void()> task;
        {
            std::unique_lock lock(mutex);
            changed.wait(lock, [this] { return closed || !tasks.empty(); });
            if (tasks.empty()) return false;
            task = std::move(tasks.front());
            tasks.pop_front();
        }
        task();
        return true;
    }
};

CompletionThread::CompletionThread()
    : state_(std::make_shared<State>())
    , thread_([state = state_] {
        while (state->runNext()) {
        }
    }) {}

CompletionThread::~CompletionThread() { finish(); }

void CompletionThread::post(std::function<void()> task) {
    const auto state = state_; // the task may destroy this object before we are through
    {
        const std::lock_guard lock(state->mutex);
        state->tasks.push_back(std::move(task));
    }
    state->changed.notify_one();
}

void CompletionThread::finish() {
    if (!thread_.joinable()) return;
    {
        const std::lock_guard lock(state_->mutex);
        state_->closed = true;
    }
    state_->changed.notify_one();
    if (thread_.get_id() != std::this_thread::get_id()) {
        thread_.join();
        return;
    }
    while (state_->runNext()) {
    }
    thread_.detach();
}

} // namespace norvane
