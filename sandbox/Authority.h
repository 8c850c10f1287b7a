#pragma once

#include <chrono>
#include <filesystem>
#include <string>

namespace norvane::sandbox {

/// Files of the certificates with which the service proves who it is.
struct AuthorityFiles {
    std::filesystem::path authority; ///< certificate of the authority: what clients trust
    std::filesystem::path chain;     ///< the service's certificate, then the authority's
    std::filesystem::path key;       ///< of the service, 0600
};

/// Makes in `folder` what is missing there: an authority of ten years and, signed by it, a certificate of one
/// year for localhost, 127.0.0.1, ::1 and `host`. What is there is used again, unless it is damaged, does not
/// belong together, lacks `host` or ends within a day of `now`. Throws std::runtime_error when files cannot
/// be written.
AuthorityFiles prepareAuthority(const std::filesystem::path& folder, const std::string& host,
                                std::chrono::system_clock::time_point now);

} // namespace norvane::sandbox
