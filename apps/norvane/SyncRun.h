#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace norvane::cli {

struct SyncOutcome {
    std::vector<std::string> succeeded;                      ///< transaction ids
    std::vector<std::pair<std::string, std::string>> failed; ///< transaction id and reason
    std::size_t pending = 0;                                 ///< envelopes that still wait
};

/// Uploads all pending envelopes, or the one of that envelope or transaction id, and returns when each has
/// its outcome. With nothing pending it returns at once; that counts as a failure of the one that was named.
SyncOutcome runSync(const std::string& id);

} // namespace norvane::cli
