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
    /// Exactly one action's handler runs afterwards, on the main queue, never inside this call.
    virtual void present(Alert alert) = 0;
    /// A passing overlay, without an answer. Any thread may call.
    virtual void showError(const std::string& message) = 0;
};

} // namespace norvane
