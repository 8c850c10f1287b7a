#include "src/platform/SerialQueue.h"

#include <norvane/platform/NVMException.h>

#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <thread>

namespace norvane {

namespace {

/// A busy queue gives its thread back after so many tasks, so that the others get their turn.
constexpr int kTasksATurn = 32;

} // namespace

struct SerialQueue::State : std::enable_shared_from_this<State> {
    State(std::string name, WorkerPool workers)
        : label(std::move(name))
        , pool(std::move(workers)) {}

    const std::string label;
    const WorkerPool pool;

    mutable std::mutex mutex; ///< guards all below
    std::condition_variable changed;
    std::deque<Task> tasks;
    std::thread::id runner; ///< the thread that runs the queue's tasks, if any
    bool posted = false;    ///< a turn on the pool is on its way
    bool closed = false;

    bool isIdle() const { return runner == std::thread::id(); }

    /// Sees to it that a thread of the pool comes by. Needs the mutex.
    void callPool() {
        if (posted || tasks.empty() || !isIdle()) return;
        posted = true;
        pool.post([self = shared_from_this()] { self->takeTurn(); });
    }

    void takeTurn() noexcept {
        std::unique_lock lock(mutex);
        posted = false;
        if (!isIdle()) return;
        runner = std::this_thread::get_id();
        for (int count = 0; count < kTasksATurn && !tasks.empty(); ++count)
            runFirst(lock);
        retire();
    }

    void runFirst(std::unique_lock<std::mutex>& lock) noexcept {
        Task task = std::move(tasks.front());
        tasks.pop_front();
        lock.unlock();
        task();
        task = nullptr;
        lock.lock();
    }

    /// The thread that ran the queue leaves it. Needs the mutex.
    void retire() {
        runner = {};
        callPool();
        changed.notify_all();
    }
};

SerialQueue::SerialQueue(std::string label, WorkerPool pool)
    : state_(std::make_shared<State>(std::move(label), std::move(pool))) {}

SerialQueue::~SerialQueue() {
    std::deque<Task> dropped;
    std::unique_lock lock(state_->mutex);
    state_->closed = true;
    dropped.swap(state_->tasks);
    state_->changed.notify_all();
    lock.unlock();
    dropped.clear(); // without the lock: a task may own anything
    lock.lock();
    if (state_->runner == std::this_thread::get_id()) return;
    state_->changed.wait(lock, [this] { return state_->isIdle(); });
}

void SerialQueue::async(Task task) {
    const auto state = state_; // the task may end this object before the call returns
    const std::lock_guard lock(state->mutex);
    state->tasks.push_back(std::move(task));
    state->callPool();
}

void SerialQueue::sync(const Task& task) {
    const auto state = state_;
    std::unique_lock lock(state->mutex);
    if (state->runner == std::this_thread::get_id()) {
        throw NVMException("InvalidQueueUse", "sync on the queue that is running: " + state->label);
    }
    bool done = false;
    std::exception_ptr thrown;
    state->tasks.emplace_back([&] {
        try {
            task();
        } catch (...) {
            thrown = std::current_exception();
        }
        const std::lock_guard doneLock(state->mutex);
        done = true;
        state->changed.notify_all();
    });
    while (!done) {
        if (!state->isIdle()) {
            state->changed.wait(lock);
            continue;
        }
        if (state->closed)
            throw NVMException("InvalidQueueUse", "sync on a queue that ended: " + state->label);
        state->runner = std::this_thread::get_id();
        while (!done && !state->tasks.empty())
            state->runFirst(lock);
        state->retire();
    }
    lock.unlock();
    if (thrown) std::rethrow_exception(thrown);
}

bool SerialQueue::isCurrent() const {
    const std::lock_guard lock(state_->mutex);
    return state_->runner == std::this_thread::get_id();
}

} // namespace norvane
