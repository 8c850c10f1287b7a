#pragma once

#include <norvane/platform/Value.h>

#include <functional>
#include <memory>
#include <string>

namespace norvane {

struct Notification {
    std::string name;
    Value object; ///< who posted it, often null
    Dictionary userInfo;
};

/// Broadcasts within the process. Any thread may call.
class NotificationCentre {
  public:
    using Observer = std::function<void(const Notification&)>;
    virtual ~NotificationCentre() = default;
    /// Calls every observer of that name, in the order in which they subscribed, on the calling thread,
    /// before it returns. No lock is held meanwhile: observers may post, subscribe and unsubscribe.
    virtual void post(const Notification& notification) = 0;
    /// Subscribes until the token is destroyed; an empty name means every notification. When the token's
    /// destruction returns on another thread than a running call's, that call has returned.
    [[nodiscard]] virtual std::shared_ptr<void> addObserver(std::string name, Observer observer) = 0;
};

} // namespace norvane
