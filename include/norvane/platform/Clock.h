#pragma once

#include <norvane/platform/Date.h>

#include <cstddef>
#include <string>

namespace norvane {

class Clock {
  public:
    virtual ~Clock() = default;
    virtual Date now() const = 0;
};

/// Unpredictable bytes and identifiers. Any thread may call.
class Random {
  public:
    virtual ~Random() = default;
    virtual void fill(void* bytes, std::size_t size) = 0;
    /// A fresh version 4 UUID in upper case: "F47AC10B-58CC-4372-A567-0E02B2C3D479".
    virtual std::string uuidString() = 0;
};

/// Whether the text is a UUID of 8-4-4-4-12 hexadecimal digits, in either case.
bool isUuidString(const std::string& text);

} // namespace norvane
