#pragma once

#include <functional>
#include <memory>

namespace norvane {

/// Watches whether any network can be reached. Status: -1 unknown, 0 not reachable, 1 or more reachable
/// (the default adapter counts the loopback interface as no network).
class Reachability {
  public:
    using Callback = std::function<void(int status)>;
    virtual ~Reachability() = default; ///< no callback runs after this returns
    virtual int status() const = 0;
    /// The callback runs on the monitor's thread, first with the present status, then at each change, until
    /// the returned token is destroyed; after that it never runs again.
    [[nodiscard]] virtual std::shared_ptr<void> observe(Callback callback) = 0;
};

} // namespace norvane
