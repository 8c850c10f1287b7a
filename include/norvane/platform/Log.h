#pragma once

#include <memory>
#include <string_view>

namespace norvane {

enum class LogLevel { Debug, Info, Warning, Error };

/// The system log. Any thread may call. Passwords, tokens, document contents and signatures are never passed.
class Log {
  public:
    virtual ~Log() = default;
    virtual void write(LogLevel level, std::string_view message) = 0;
};

} // namespace norvane
