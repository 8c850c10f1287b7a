#pragma once

#include <norvane/platform/Alerts.h>
#include <norvane/platform/Executors.h>

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace norvane {

/// A screen whose user is the test.
class RecordingAlerts final : public Alerts {
  public:
    explicit RecordingAlerts(std::shared_ptr<TaskQueue> mainQueue)
        : mainQueue_(std::move(mainQueue)) {}

    /// Waits for the next alert that is not answered yet and answers it by the action of that title. Gives
    /// the alert; fails the test, and gives an empty one, when none comes or it has no such action.
    Alert answer(const std::string& actionTitle);
    /// The same without choosing an action: the sheet is dismissed.
    Alert dismiss();
    std::vector<std::string> errors() const;
    std::size_t openCount() const; ///< alerts presented and not answered

    void present(Alert alert) override;
    void showError(const std::string& message) override;

  private:
    bool takeNext(Alert& alert);

    const std::shared_ptr<TaskQueue> mainQueue_;
    mutable std::mutex mutex_; ///< guards all below
    std::condition_variable changed_;
    std::deque<Alert> open_;
    std::vector<std::string> errors_;
};

} // namespace norvane
