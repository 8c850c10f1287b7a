#pragma once

#include <norvane/platform/Result.h>
#include <norvane/platform/Value.h>

#include <optional>
#include <string_view>

namespace norvane {

/// Named suites of persistent settings. Any thread may call; every call sees what the last finished call of
/// any process on the same home wrote. A value is a Boolean, number, string or date, or an array or
/// dictionary of those.
class UserDefaults {
  public:
    virtual ~UserDefaults() = default;
    /// Null when the suite holds no such key or cannot be read.
    virtual Value value(std::string_view suite, std::string_view key) const = 0;
    /// Stores the value, or removes the key when the value is null. On failure the suite is as it was.
    virtual Failure setValue(std::string_view suite, std::string_view key, const Value& value) = 0;
    /// All of a suite; empty when there is none.
    virtual Dictionary all(std::string_view suite) const = 0;
};

} // namespace norvane
