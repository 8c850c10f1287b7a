#pragma once

#include "src/platform/WorkerPool.h"

#include <norvane/platform/Executors.h>

#include <memory>

namespace norvane {

/// A queue without a thread of its own: whoever finds it idle runs what it holds, either a thread of the pool
/// or, in `sync`, the caller itself. So queues that wait for one another never use up the pool.
class SerialQueue final : public TaskQueue {
  public:
    SerialQueue(std::string label, WorkerPool pool);
    ~SerialQueue() override;
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    void async(Task task) override;
    void sync(const Task& task) override;
    bool isCurrent() const override;

  private:
    struct State;
    std::shared_ptr<State> state_;
};

} // namespace norvane
