#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace norvane {

using Task = std::function<void()>;

/// Runs tasks one after another in the order in which they were given.
class TaskQueue {
  public:
    virtual ~TaskQueue() = default; ///< tasks not yet started are dropped; a running one is waited for
    virtual void async(Task task) = 0;
    /// Runs the task on the queue and returns when it is done. Calling it from inside the same queue is a
    /// programming error (it throws NVMException instead of waiting for ever).
    virtual void sync(const Task& task) = 0;
    /// Whether the caller runs on this queue.
    virtual bool isCurrent() const = 0;
};

/// One unit of work of an operation queue. Thread-safe. It starts when every dependency has finished or was
/// cancelled, and counts as finished when its block returned or it was cancelled before it began.
class Operation {
  public:
    virtual ~Operation() = default;
    virtual const std::string& name() const = 0;
    /// Before the operation is added to a queue only.
    virtual void addDependency(const std::shared_ptr<Operation>& other) = 0;
    virtual void cancel() = 0; ///< one that already runs goes on; its block may ask `isCancelled`
    virtual bool isCancelled() const = 0;
    virtual bool isFinished() const = 0;
};

/// Runs operations on threads of its own (a block may wait), in the order of their dependencies.
class OperationQueue {
  public:
    virtual ~OperationQueue() = default; ///< cancels what has not begun, waits for what runs
    virtual const std::string& name() const = 0;
    virtual void add(const std::vector<std::shared_ptr<Operation>>& operations) = 0;
    virtual void cancelAllOperations() = 0;
    virtual std::size_t operationCount() const = 0; ///< added and not yet finished
    virtual void waitUntilAllOperationsAreFinished() = 0;
};

/// Joins several asynchronous pieces of work.
class TaskGroup {
  public:
    virtual ~TaskGroup() = default;
    virtual void enter() = 0;
    virtual void leave() = 0; ///< once for each `enter`
    /// Runs the task on the queue once every `enter` so far has its `leave`.
    virtual void notify(const std::shared_ptr<TaskQueue>& queue, Task task) = 0;
    virtual void wait() = 0;
};

/// Where work runs. Queues outlive the objects that hold them only until their running task returns.
class Executors {
  public:
    virtual ~Executors() = default;
    /// The host's main loop (`PlatformOptions::mainQueue`), or a thread of the kit's own.
    virtual std::shared_ptr<TaskQueue> mainQueue() = 0;
    virtual std::shared_ptr<TaskQueue> makeSerialQueue(std::string label) = 0;
    virtual std::shared_ptr<OperationQueue> makeOperationQueue(std::string name) = 0;
    virtual std::shared_ptr<Operation> makeOperation(std::string name, Task block) = 0;
    virtual std::shared_ptr<TaskGroup> makeGroup() = 0;
};

} // namespace norvane
