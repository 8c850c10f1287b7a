#include "src/platform/ThreadedOperationQueue.h"

#include "src/platform/BlockOperation.h"

#include <norvane/platform/NVMException.h>

#include <pthread.h>

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <thread>

namespace norvane {

namespace {

constexpr std::size_t kThreadLimit = 16;

using Operations = std::vector<std::shared_ptr<BlockOperation>>;

} // namespace

struct ThreadedOperationQueue::State : std::enable_shared_from_this<State> {
    explicit State(std::string queueName)
        : name(std::move(queueName)) {}

    const std::string name;

    mutable std::mutex mutex; ///< guards all below
    std::condition_variable workArrived;
    std::condition_variable allFinished;
    std::map<const BlockOperation*, std::shared_ptr<BlockOperation>> unfinished;
    std::deque<std::shared_ptr<BlockOperation>> ready;
    std::vector<std::thread> threads;
    std::size_t freeThreads = 0;
    bool closed = false;

    void enqueue(const std::shared_ptr<BlockOperation>& operation) {
        std::unique_lock lock(mutex);
        if (closed) {
            lock.unlock();
            operation->cancel();
            return;
        }
        ready.push_back(operation);
        if (ready.size() > freeThreads && threads.size() < kThreadLimit) {
            ++freeThreads;
            threads.emplace_back([self = shared_from_this()] { self->work(); });
        }
        workArrived.notify_one();
    }

    void forget(const BlockOperation* operation) {
        std::shared_ptr<BlockOperation> last; // its block's captures go without the lock
        const std::lock_guard lock(mutex);
        const auto found = unfinished.find(operation);
        if (found == unfinished.end()) return;
        last = std::move(found->second);
        unfinished.erase(found);
        if (unfinished.empty()) allFinished.notify_all();
    }

    void work() {
        pthread_setname_np(pthread_self(), name.substr(0, 15).c_str());
        std::unique_lock lock(mutex);
        for (;;) {
            workArrived.wait(lock, [this] { return closed || !ready.empty(); });
            if (closed) return;
            auto operation = std::move(ready.front());
            ready.pop_front();
            --freeThreads;
            lock.unlock();
            operation->run();
            operation = nullptr;
            lock.lock();
            ++freeThreads;
        }
    }

    Operations openOperations() const {
        const std::lock_guard lock(mutex);
        Operations operations;
        for (const auto& [key, operation] : unfinished)
            operations.push_back(operation);
        return operations;
    }

    bool isOwnThread() const {
        const auto self = std::this_thread::get_id();
        return std::any_of(threads.begin(), threads.end(),
                           [self](const std::thread& thread) { return thread.get_id() == self; });
    }
};

ThreadedOperationQueue::ThreadedOperationQueue(std::string name)
    : state_(std::make_shared<State>(std::move(name))) {}

ThreadedOperationQueue::~ThreadedOperationQueue() {
    cancelAllOperations();
    std::vector<std::thread> threads;
    {
        const std::lock_guard lock(state_->mutex);
        state_->closed = true;
        threads.swap(state_->threads);
    }
    state_->workArrived.notify_all();
    for (std::thread& thread : threads) {
        if (thread.get_id() == std::this_thread::get_id()) {
            thread.detach();
        } else {
            thread.join();
        }
    }
}

const std::string& ThreadedOperationQueue::name() const { return state_->name; }

void ThreadedOperationQueue::add(const std::vector<std::shared_ptr<Operation>>& operations) {
    Operations ours;
    for (const auto& operation : operations)
        ours.push_back(blockOperation(operation));
    for (const auto& operation : ours)
        operation->claim();
    {
        const std::lock_guard lock(state_->mutex);
        for (const auto& operation : ours)
            state_->unfinished.emplace(operation.get(), operation);
    }
    for (const auto& operation : ours) {
        const std::weak_ptr<State> state = state_;
        operation->whenFinished([state, key = operation.get()] {
            if (const auto queue = state.lock()) queue->forget(key);
        });
        operation->whenReady([state, weak = std::weak_ptr(operation)] {
            const auto queue = state.lock();
            const auto readyOperation = weak.lock();
            if (queue && readyOperation) queue->enqueue(readyOperation);
        });
    }
}

void ThreadedOperationQueue::cancelAllOperations() {
    for (const auto& operation : state_->openOperations())
        operation->cancel();
}

std::size_t ThreadedOperationQueue::operationCount() const {
    const std::lock_guard lock(state_->mutex);
    return state_->unfinished.size();
}

void ThreadedOperationQueue::waitUntilAllOperationsAreFinished() {
    std::unique_lock lock(state_->mutex);
    if (state_->isOwnThread()) {
        throw NVMException("InvalidQueueUse", "an operation would wait for its own queue: " + state_->name);
    }
    state_->allFinished.wait(lock, [this] { return state_->unfinished.empty(); });
}

} // namespace norvane
