#pragma once

#include <norvane/platform/Executors.h>

#include <memory>

namespace norvane {

/// A few threads that every serial queue shares. Copies share one pool; it ends when the last copy and the
/// last posted job are gone.
class WorkerPool {
  public:
    WorkerPool();
    void post(Task job) const;

  private:
    struct Threads;
    std::shared_ptr<Threads> threads_;
};

} // namespace norvane
