#pragma once

#include <norvane/platform/Log.h>

#include <mutex>
#include <string>
#include <vector>

namespace norvane {

/// Remembers every line. A line above Info that the test does not expect fails it, and so does an expected
/// one that never came.
class RecordingLog final : public Log {
  public:
    ~RecordingLog() override;

    /// From now on lines that contain the fragment are no failure; at least one must come.
    void expect(std::string fragment);
    bool contains(std::string_view fragment) const;
    std::vector<std::string> lines() const;

    void write(LogLevel level, std::string_view message) override;

  private:
    struct Expectation {
        std::string fragment;
        bool met = false;
    };
    mutable std::mutex mutex_; ///< guards all below
    std::vector<Expectation> expectations_;
    std::vector<std::string> lines_;
};

} // namespace norvane
