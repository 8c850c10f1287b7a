#pragma once

#include <norvane/platform/Clock.h>

#include <atomic>

namespace norvane {

/// Stands still until the test moves it. Starts at 2024-03-01T12:00:00Z.
class FakeClock final : public Clock {
  public:
    Date now() const override { return Date(std::chrono::milliseconds(time_)); }
    void set(Date date) { time_ = date.time_since_epoch().count(); }
    void advance(std::chrono::milliseconds by) { time_ += by.count(); }

  private:
    std::atomic<std::int64_t> time_ = 1'709'294'400'000;
};

} // namespace norvane
