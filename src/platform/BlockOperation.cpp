#include "src/platform/BlockOperation.h"

#include <norvane/platform/NVMException.h>

#include <atomic>
#include <set>

namespace norvane {

void BlockOperation::addDependency(const std::shared_ptr<Operation>& other) {
    auto dependency = blockOperation(other);
    if (dependency->dependsOn(this)) {
        throw NVMException("InvalidOperationUse", name_ + " would wait for itself");
    }
    const std::lock_guard lock(mutex_);
    if (claimed_) throw NVMException("InvalidOperationUse", name_ + " is in a queue already");
    dependencies_.push_back(std::move(dependency));
}

bool BlockOperation::dependsOn(const BlockOperation* other) const {
    if (this == other) return true;
    std::set<const BlockOperation*> seen;
    auto open = dependencies();
    while (!open.empty()) {
        const auto operation = std::move(open.back());
        open.pop_back();
        if (operation.get() == other) return true;
        if (!seen.insert(operation.get()).second) continue;
        for (auto& dependency : operation->dependencies())
            open.push_back(std::move(dependency));
    }
    return false;
}

std::vector<std::shared_ptr<BlockOperation>> BlockOperation::dependencies() const {
    const std::lock_guard lock(mutex_);
    return dependencies_;
}

void BlockOperation::claim() {
    const std::lock_guard lock(mutex_);
    if (claimed_) throw NVMException("InvalidOperationUse", name_ + " is in a queue already");
    claimed_ = true;
}

void BlockOperation::whenReady(Task ready) {
    const auto open = dependencies();
    // One more than there are, so that nothing starts while the rest is still being asked.
    const auto count = std::make_shared<std::atomic<std::size_t>>(open.size() + 1);
    const Task countDown = [count, ready = std::move(ready)] {
        if (count->fetch_sub(1) == 1) ready();
    };
    for (const auto& dependency : open)
        dependency->whenFinished(countDown);
    countDown();
}

void BlockOperation::whenFinished(Task task) {
    {
        const std::lock_guard lock(mutex_);
        if (stage_ != Stage::Finished) {
            finishTasks_.push_back(std::move(task));
            return;
        }
    }
    task();
}

void BlockOperation::cancel() {
    const auto keepAlive = shared_from_this();
    std::unique_lock lock(mutex_);
    cancelled_ = true;
    if (stage_ == Stage::Waiting) finish(std::move(lock));
}

void BlockOperation::run() noexcept {
    Task block;
    {
        const std::lock_guard lock(mutex_);
        if (stage_ != Stage::Waiting) return;
        stage_ = Stage::Running;
        block.swap(block_);
    }
    if (block) block();
    block = nullptr;
    finish(std::unique_lock(mutex_));
}

void BlockOperation::finish(std::unique_lock<std::mutex> lock) {
    stage_ = Stage::Finished;
    const Task unused = std::move(block_);
    const auto released = std::move(dependencies_);
    const auto tasks = std::move(finishTasks_);
    dependencies_.clear();
    finishTasks_.clear();
    lock.unlock();
    for (const Task& task : tasks)
        task();
}

bool BlockOperation::isCancelled() const {
    const std::lock_guard lock(mutex_);
    return cancelled_;
}

bool BlockOperation::isFinished() const {
    const std::lock_guard lock(mutex_);
    return stage_ == Stage::Finished;
}

std::shared_ptr<BlockOperation> blockOperation(const std::shared_ptr<Operation>& operation) {
    auto ours = std::dynamic_pointer_cast<BlockOperation>(operation);
    if (!ours) throw NVMException("InvalidOperationUse", "no operation of these executors");
    return ours;
}

} // namespace norvane
