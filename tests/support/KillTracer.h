#pragma once

#include <compare>
#include <optional>
#include <string>
#include <vector>

namespace norvane::testing {

/// A moment in a program's run: the entry of the `count`-th call (from 1) of one kind on one thread. Threads
/// are numbered in the order in which they began, the main thread being 0.
struct KillPoint {
    int thread = 0;
    long call = 0;
    int count = 0;
    auto operator<=>(const KillPoint&) const = default;
    std::string description() const; ///< "thread 2, pwrite64, 7"
};

/// Runs a program under ptrace and ends it with SIGKILL at a chosen system call. Only calls that change what
/// is on disk or on the wire are points: between two of them the world stays the same, so that killing at a
/// read, a close or a futex would only repeat the next point. Points count from the first file opened below
/// `root`.
class KillTracer {
  public:
    struct Command {
        std::vector<std::string> arguments; ///< the program first
        std::vector<std::string> environment;
        std::string root;       ///< home folder of the program
        std::string outputFile; ///< where standard output and error go
    };
    struct Run {
        bool killed = false;
        int exitStatus = -1; ///< when it ended by itself
        std::vector<KillPoint> points;
    };

    /// Runs to the end, or to `killAt`.
    static Run run(const Command& command, std::optional<KillPoint> killAt = std::nullopt);
};

} // namespace norvane::testing
