#pragma once

#include <functional>
#include <memory>
#include <thread>

namespace norvane {

/// One thread that runs tasks in order. It may be finished and destroyed from inside one of its own tasks.
class CompletionThread {
  public:
    CompletionThread();
    ~CompletionThread(); ///< as `finish`

    void post(std::function<void()> task);
    /// Returns when everything posted has run, what it posted in turn included; called from inside a task,
    /// it runs the rest right there. Nothing may be posted afterwards.
    void finish();

  private:
    struct State;
    std::shared_ptr<State> state_; ///< outlives this object while the last task returns
    std::thread thread_;
};

} // namespace norvane
