#pragma once

#include "src/platform/http/CacheRules.h"

#include <optional>

namespace norvane {

/// A cached response as the bytes of a file: a line with the form's name, one with the SHA-256 of all that
/// follows, one with times and status, the headers a line each, an empty line, the body.
Data encodeCacheEntry(const CachedResponse& cached);
/// Nothing when the bytes are not what was written.
std::optional<CachedResponse> decodeCacheEntry(const Data& bytes);

} // namespace norvane
