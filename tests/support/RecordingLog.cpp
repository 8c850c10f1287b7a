#include "tests/support/RecordingLog.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace norvane {

RecordingLog::~RecordingLog() {
    for (const Expectation& expectation : expectations_) {
        EXPECT_TRUE(expectation.met) << "no log line with: " << expectation.fragment;
    }
}

void RecordingLog::expect(std::string fragment) {
    const std::lock_guard lock(mutex_);
    expectations_.push_back({std::move(fragment)});
}

bool RecordingLog::contains(std::string_view fragment) const {
    const std::lock_guard lock(mutex_);
    return std::any_of(lines_.begin(), lines_.end(),
                       [&](const std::string& line) { return line.find(fragment) != std::string::npos; });
}

std::vector<std::string> RecordingLog::lines() const {
    const std::lock_guard lock(mutex_);
    return lines_;
}

void RecordingLog::write(LogLevel level, std::string_view message) {
    bool isExpected = level == LogLevel::Debug || level == LogLevel::Info;
    {
        const std::lock_guard lock(mutex_);
        lines_.emplace_back(message);
        for (Expectation& expectation : expectations_) {
            if (message.find(expectation.fragment) == std::string_view::npos) continue;
            expectation.met = true;
            isExpected = true;
        }
    }
    EXPECT_TRUE(isExpected) << "unexpected log line: " << message;
}

} // namespace norvane
