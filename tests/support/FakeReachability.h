#pragma once

#include "src/platform/StatusObservers.h"
#include "src/platform/http/CompletionThread.h"

#include <norvane/platform/Reachability.h>

#include <atomic>
#include <future>
#include <memory>

namespace norvane {

/// A network that comes and goes as the test says.
class FakeReachability final : public Reachability {
  public:
    explicit FakeReachability(int status = 1)
        : status_(status) {}
    ~FakeReachability() override { monitor_.finish(); }

    int status() const override { return status_; }

    std::shared_ptr<void> observe(Callback callback) override {
        auto token = observers_->add(std::move(callback));
        tellLater(status_);
        return token;
    }

    void setStatus(int status) {
        status_ = status;
        tellLater(status);
    }

    /// Returns when everybody was told.
    void settle() {
        std::promise<void> told;
        monitor_.post([&told] { told.set_value(); });
        told.get_future().wait();
    }

  private:
    void tellLater(int status) {
        monitor_.post([observers = observers_, status] { observers->tell(status); });
    }

    std::atomic<int> status_;
    const std::shared_ptr<StatusObservers> observers_ = std::make_shared<StatusObservers>();
    CompletionThread monitor_;
};

} // namespace norvane
