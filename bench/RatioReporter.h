#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>

namespace norvane::bench {

/// Prints, for every pair "<line>/kit" and "<line>/limit", both medians and their ratio. A line without a
/// limit prints its median alone. Counters, such as bytes a second, stand below.
class RatioReporter : public benchmark::BenchmarkReporter {
  public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;
    bool failed() const { return failed_; } ///< whether a line ended with an error

  private:
    struct Line {
        double kit = 0; ///< milliseconds, median of the repetitions
        double limit = 0;
        benchmark::UserCounters kitCounters;
        benchmark::UserCounters limitCounters;
    };
    /// What a line counts besides time: bytes as MB/s, anything else by its name.
    static void printCounters(const char* side, const benchmark::UserCounters& counters);

    std::map<std::string, Line> lines_;
    bool failed_ = false;
};

} // namespace norvane::bench
