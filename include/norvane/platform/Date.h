#pragma once

#include <chrono>

namespace norvane {

/// A point in time in UTC, to the millisecond.
using Date = std::chrono::sys_time<std::chrono::milliseconds>;

} // namespace norvane
