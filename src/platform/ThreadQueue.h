#pragma once

#include <norvane/platform/Executors.h>

#include <memory>
#include <thread>

namespace norvane {

/// A queue with a thread of its own: the main queue of a process whose host hands in none.
class ThreadQueue final : public TaskQueue {
  public:
    explicit ThreadQueue(std::string label);
    ~ThreadQueue() override;
    ThreadQueue(const ThreadQueue&) = delete;
    ThreadQueue& operator=(const ThreadQueue&) = delete;

    void async(Task task) override;
    void sync(const Task& task) override;
    bool isCurrent() const override;

  private:
    struct State;
    std::shared_ptr<State> state_;
    std::thread thread_;
};

} // namespace norvane
