#pragma once

#include <cstddef>

namespace norvane::bench {

/// How often this thread has taken memory with `new` so far.
std::size_t allocations();

} // namespace norvane::bench
