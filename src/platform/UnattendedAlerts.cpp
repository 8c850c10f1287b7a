#include "src/platform/Adapters.h"

#include <algorithm>

namespace norvane {

namespace {

/// Answers for the person who is not there; the rules are with the port.
class UnattendedAlerts final : public Alerts {
  public:
    UnattendedAlerts(std::shared_ptr<TaskQueue> mainQueue, std::shared_ptr<Log> log)
        : mainQueue_(std::move(mainQueue))
        , log_(std::move(log)) {}

    void present(Alert alert) override {
        log_->write(LogLevel::Info, "No screen to show an alert on: " + alert.title);
        if (alert.actions.empty() || (alert.isSheet && alert.actions.size() == 1)) return;
        const auto backingOut =
            std::find_if(alert.actions.rbegin(), alert.actions.rend(),
                         [](const Alert::Action& action) { return !action.isDestructive; });
        const auto& chosen = backingOut == alert.actions.rend() ? alert.actions.back() : *backingOut;
        if (chosen.handler) mainQueue_->async(chosen.handler);
    }

    void showError(const std::string& message) override {
        log_->write(LogLevel::Info, "No screen to show an error on: " + message);
    }

  private:
    const std::shared_ptr<TaskQueue> mainQueue_;
    const std::shared_ptr<Log> log_;
};

} // namespace

std::shared_ptr<Alerts> makeUnattendedAlerts(std::shared_ptr<TaskQueue> mainQueue, std::shared_ptr<Log> log) {
    return std::make_shared<UnattendedAlerts>(std::move(mainQueue), std::move(log));
}

} // namespace norvane
