#include "Secrets.h"

#include <termios.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <iostream>

namespace norvane::cli {

namespace {

constexpr std::array kEndingSignals{SIGINT, SIGTERM, SIGHUP};

termios savedTerminal{}; ///< what a signal restores before it ends the program

void restoreAndEnd(int signal) {
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &savedTerminal);
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

/// Echo is off while this lives, and on again when a signal ends the program meanwhile.
class SilentTerminal {
  public:
    SilentTerminal() {
        active_ = tcgetattr(STDIN_FILENO, &savedTerminal) == 0;
        if (!active_) return;
        for (std::size_t i = 0; i < kEndingSignals.size(); ++i)
            before_[i] = std::signal(kEndingSignals[i], &restoreAndEnd);
        termios silent = savedTerminal;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
    }
    ~SilentTerminal() {
        if (!active_) return;
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &savedTerminal);
        for (std::size_t i = 0; i < kEndingSignals.size(); ++i)
            std::signal(kEndingSignals[i], before_[i]);
    }
    SilentTerminal(const SilentTerminal&) = delete;
    SilentTerminal& operator=(const SilentTerminal&) = delete;

  private:
    std::array<void (*)(int), kEndingSignals.size()> before_{};
    bool active_ = false;
};

} // namespace

std::string secretFrom(const char* variable, const std::string& prompt) {
    if (const char* value = std::getenv(variable)) {
        std::string secret(value);
        unsetenv(variable);
        return secret;
    }
    if (!isatty(STDIN_FILENO)) return {};
    std::cerr << prompt << ": " << std::flush;
    const SilentTerminal silence;
    std::string secret;
    std::getline(std::cin, secret);
    std::cerr << '\n';
    return secret;
}

} // namespace norvane::cli
