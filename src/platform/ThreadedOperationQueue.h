#pragma once

#include <norvane/platform/Executors.h>

#include <memory>

namespace norvane {

/// Starts a thread whenever an operation is ready and no thread of the queue is free, up to a bound that only
/// a queue of many waiting blocks reaches.
class ThreadedOperationQueue final : public OperationQueue {
  public:
    explicit ThreadedOperationQueue(std::string name);
    ~ThreadedOperationQueue() override;
    ThreadedOperationQueue(const ThreadedOperationQueue&) = delete;
    ThreadedOperationQueue& operator=(const ThreadedOperationQueue&) = delete;

    const std::string& name() const override;
    void add(const std::vector<std::shared_ptr<Operation>>& operations) override;
    void cancelAllOperations() override;
    std::size_t operationCount() const override;
    void waitUntilAllOperationsAreFinished() override;

  private:
    struct State;
    std::shared_ptr<State> state_;
};

} // namespace norvane
