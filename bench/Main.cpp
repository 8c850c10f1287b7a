#include "bench/RatioReporter.h"

#include <benchmark/benchmark.h>

#include <vector>

int main(int argc, char** argv) {
    std::vector<char*> arguments(argv, argv + argc);
    // Kit and limit alternate at random within one run, so that the machine's drift hits both alike.
    static char interleave[] = "--benchmark_enable_random_interleaving=true";
    static char repetitions[] = "--benchmark_repetitions=9";
    static char shortest[] = "--benchmark_min_time=0.1";
    arguments.insert(arguments.begin() + 1, {interleave, repetitions, shortest});
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;
    norvane::bench::RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return reporter.failed() ? 1 : 0;
}
