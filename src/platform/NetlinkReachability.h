#pragma once

#include <norvane/platform/Reachability.h>

#include <memory>
#include <thread>

namespace norvane {

/// Looks at the kernel's routes whenever the kernel says that links or routes changed: 1 with a usable route,
/// 0 without, -1 for good where the kernel may not be asked. May be destroyed inside a callback.
class NetlinkReachability final : public Reachability {
  public:
    NetlinkReachability();
    ~NetlinkReachability() override;

    int status() const override;
    std::shared_ptr<void> observe(Callback callback) override;

  private:
    struct Monitor;
    const std::shared_ptr<Monitor> monitor_; ///< outlives this object while a last callback returns
    std::thread thread_;
};

} // namespace norvane
