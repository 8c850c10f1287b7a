#include "src/platform/Adapters.h"

#include <syslog.h>

#include <algorithm>

namespace norvane {

namespace {

int priorityOf(LogLevel level) {
    switch (level) {
    case LogLevel::Debug:
        return LOG_DEBUG;
    case LogLevel::Info:
        return LOG_INFO;
    case LogLevel::Warning:
        return LOG_WARNING;
    case LogLevel::Error:
        break;
    }
    return LOG_ERR;
}

/// Leaves `openlog` to the host: the name and options under which a process logs are its own.
class SystemLog final : public Log {
  public:
    void write(LogLevel level, std::string_view message) override {
        constexpr std::size_t kLongestLine = 8192;
        const int length = static_cast<int>(std::min(message.size(), kLongestLine));
        syslog(LOG_USER | priorityOf(level), "%.*s", length, message.data());
    }
};

} // namespace

std::shared_ptr<Log> makeSystemLog() { return std::make_shared<SystemLog>(); }

} // namespace norvane
