#pragma once

#include <sys/types.h>

#include <string>
#include <utility>
#include <vector>

namespace norvane {

/// Another program that a test needs, ended with the test at the latest.
class ChildProcess {
  public:
    struct Options {
        std::vector<std::string> arguments;                           ///< the program first
        std::vector<std::pair<std::string, std::string>> environment; ///< added to the test's own
        std::string input;                                            ///< what it finds on standard input
        bool isQuiet = false;                                         ///< its standard error goes nowhere
    };

    ChildProcess() = default;
    explicit ChildProcess(const Options& options);
    ~ChildProcess() { stop(); }
    ChildProcess(ChildProcess&& other) noexcept
        : process_(std::exchange(other.process_, -1))
        , output_(std::exchange(other.output_, -1)) {}
    ChildProcess& operator=(ChildProcess&& other) noexcept;

    /// This very test program in a role (see `TestRole`).
    static ChildProcess inRole(const std::string& role, const std::vector<std::string>& arguments);

    /// The next line of its standard output; empty at the end.
    std::string readLine();
    /// Waits for its end and gives its exit status, or -1 when a signal ended it.
    int wait();
    /// Ends it, if it still runs, by SIGTERM.
    void stop();

  private:
    pid_t process_ = -1;
    int output_ = -1;
};

/// What the test program does, instead of running tests, when a test starts it in this role. Make one as a
/// static object beside the test.
struct TestRole {
    using Main = int (*)(const std::vector<std::string>& arguments);
    TestRole(std::string name, Main main);
};

/// Plays the role that the command line asks for; -1 when it asks for none.
int playRole(int argc, char** argv);

} // namespace norvane
