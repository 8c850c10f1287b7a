#include "bench/RatioReporter.h"

#include <cstdio>

namespace norvane::bench {

bool RatioReporter::ReportContext(const Context&) {
    std::printf("%-44s %12s %12s %8s\n", "line (medians, taken turn by turn)", "kit ms", "limit ms", "ratio");
    return true;
}

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.error_occurred) {
            std::printf("%s failed: %s\n", run.benchmark_name().c_str(), run.error_message.c_str());
            failed_ = true;
            continue;
        }
        if (run.run_type != Run::RT_Aggregate || run.aggregate_name != "median") continue;
        const std::string& name = run.run_name.function_name;
        const std::size_t slash = name.rfind('/');
        const std::string side = name.substr(slash + 1);
        Line& line = lines_[name.substr(0, slash)];
        const double milliseconds = run.GetAdjustedRealTime();
        (side == "kit" ? line.kit : line.limit) = milliseconds;
        (side == "kit" ? line.kitCounters : line.limitCounters) = run.counters;
    }
}

void RatioReporter::Finalize() {
    for (const auto& [name, line] : lines_) {
        if (line.limit > 0)
            std::printf("%-44s %12.3f %12.3f %8.2f\n", name.c_str(), line.kit, line.limit,
                        line.kit / line.limit);
        else
            std::printf("%-44s %12.3f\n", name.c_str(), line.kit);
        printCounters("kit", line.kitCounters);
        printCounters("limit", line.limitCounters);
    }
}

void RatioReporter::printCounters(const char* side, const benchmark::UserCounters& counters) {
    for (const auto& [name, counter] : counters) {
        const bool isBytes = name == "bytes_per_second";
        std::printf("    %-8s %10.1f %s\n", side, isBytes ? counter.value / 1e6 : counter.value,
                    isBytes ? "MB/s" : name.c_str());
    }
}

} // namespace norvane::bench
