#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>

namespace norvane::bench {

/// Prints, for every pair "<line>/kit" and "<line>/limit", both medians and their ratio. A line without a
/// limit prints its median alone.
class RatioReporter : public benchmark::BenchmarkReporter {
  public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

  private:
    struct Line {
        double kit = 0; ///< milliseconds, median of the repetitions
        double limit = 0;
        std::string limitName;
    };
    std::map<std::string, Line> lines_;
    bool failed_ = false;
};

} // namespace norvane::bench
