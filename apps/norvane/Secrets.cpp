#include "Secrets.h"

#include <termios.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>

namespace norvane::cli {

namespace {

/// Echo is off while this lives.
class SilentTerminal {
  public:
    SilentTerminal() {
        active_ = tcgetattr(STDIN_FILENO, &saved_) == 0;
        if (!active_) return;
        termios silent = saved_;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
    }
    ~SilentTerminal() {
        if (active_) tcsetattr(STDIN_FILENO, TCSAFLUSH, &saved_);
    }
    SilentTerminal(const SilentTerminal&) = delete;
    SilentTerminal& operator=(const SilentTerminal&) = delete;

  private:
    termios saved_{};
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
