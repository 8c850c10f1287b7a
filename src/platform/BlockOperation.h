#pragma once

#include <norvane/platform/Executors.h>

#include <mutex>

namespace norvane {

/// An operation made of a block. Its life: waiting (for a queue, then for its dependencies) -> running ->
/// finished, or waiting -> finished when it is cancelled before it began.
class BlockOperation final : public Operation, public std::enable_shared_from_this<BlockOperation> {
  public:
    BlockOperation(std::string name, Task block)
        : name_(std::move(name))
        , block_(std::move(block)) {}
    BlockOperation(const BlockOperation&) = delete;
    BlockOperation& operator=(const BlockOperation&) = delete;

    const std::string& name() const override { return name_; }
    void addDependency(const std::shared_ptr<Operation>& other) override;
    void cancel() override;
    bool isCancelled() const override;
    bool isFinished() const override;

    /// Marks it as belonging to a queue. Throws when it belongs to one already.
    void claim();
    /// Calls `ready` once all dependencies have finished; at once and on the calling thread when they have.
    void whenReady(Task ready);
    /// Calls it once the operation has finished; at once when it has.
    void whenFinished(Task task);
    /// Runs the block, unless it was cancelled before.
    void run() noexcept;

  private:
    enum class Stage { Waiting, Running, Finished };

    bool dependsOn(const BlockOperation* other) const;
    std::vector<std::shared_ptr<BlockOperation>> dependencies() const;
    void finish(std::unique_lock<std::mutex> lock);

    const std::string name_;
    mutable std::mutex mutex_; ///< guards all below
    Task block_;
    Stage stage_ = Stage::Waiting;
    bool cancelled_ = false;
    bool claimed_ = false;
    std::vector<std::shared_ptr<BlockOperation>> dependencies_;
    std::vector<Task> finishTasks_;
};

/// The operation as one of ours; throws NVMException for null and for a class of the host's own.
std::shared_ptr<BlockOperation> blockOperation(const std::shared_ptr<Operation>& operation);

} // namespace norvane
