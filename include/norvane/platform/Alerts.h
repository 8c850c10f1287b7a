#pragma once

#include <functional>
#include <string>
#include <vector>

namespace norvane {

/// A message for the person at the screen, with its actions in order of display.
struct Alert {
    struct Action {
        std::string title;
        std::function<void()> handler; ///< may be empty
        bool isDestructive = false;
    };
    std::string title;
    std::string message;
    std::vector<Action> actions;
    bool isSheet = false;
};

/// Shows alerts, action sheets and error overlays. Called on the main queue; returns at once.
class Alerts {
  public:
    virtual ~Alerts() = default;
    /// Exactly one action's handler runs afterwards, on the main queue, never inside this call; only a sheet
    /// may also be dismissed, and then none runs. The default adapter has no screen and nobody to ask: it
    /// acknowledges a plain message (one action, not destructive, no sheet), answers a question with the last
    /// action that is not destructive (by custom the one that backs out), and dismisses a sheet that offers
    /// one action only. It never runs a destructive action unless an alert has no other.
    virtual void present(Alert alert) = 0;
    /// A passing overlay, without an answer. Any thread may call.
    virtual void showError(const std::string& message) = 0;
};

} // namespace norvane
