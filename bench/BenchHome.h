#pragma once

#include <filesystem>

namespace norvane::bench {

/// The home that all benchmarks share, with the platform installed on it; made at the first call, removed at
/// the end of the process.
const std::filesystem::path& benchHome();

} // namespace norvane::bench
