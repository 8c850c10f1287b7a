#include "tests/support/RecordingAlerts.h"

#include "tests/support/Event.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace norvane {

bool RecordingAlerts::takeNext(Alert& alert) {
    std::unique_lock lock(mutex_);
    if (!changed_.wait_for(lock, kTestPatience, [this] { return !open_.empty(); })) {
        ADD_FAILURE() << "no alert was presented";
        return false;
    }
    alert = std::move(open_.front());
    open_.pop_front();
    return true;
}

Alert RecordingAlerts::answer(const std::string& actionTitle) {
    Alert alert;
    if (!takeNext(alert)) return alert;
    const auto action = std::find_if(alert.actions.begin(), alert.actions.end(),
                                     [&](const Alert::Action& each) { return each.title == actionTitle; });
    if (action == alert.actions.end()) {
        ADD_FAILURE() << "\"" << alert.title << "\" has no action " << actionTitle;
        return {};
    }
    if (action->handler) mainQueue_->async(action->handler);
    return alert;
}

Alert RecordingAlerts::dismiss() {
    Alert alert;
    takeNext(alert);
    return alert;
}

std::vector<std::string> RecordingAlerts::errors() const {
    const std::lock_guard lock(mutex_);
    return errors_;
}

std::size_t RecordingAlerts::openCount() const {
    const std::lock_guard lock(mutex_);
    return open_.size();
}

void RecordingAlerts::present(Alert alert) {
    const std::lock_guard lock(mutex_);
    open_.push_back(std::move(alert));
    changed_.notify_all();
}

void RecordingAlerts::showError(const std::string& message) {
    const std::lock_guard lock(mutex_);
    errors_.push_back(message);
}

} // namespace norvane
