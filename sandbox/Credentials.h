#pragma once

#include <filesystem>
#include <string>

namespace norvane::sandbox {

/// The one user of the one account.
struct Credentials {
    std::string userName; ///< the person's full name; signs in with it or with the e-mail
    std::string email;
    std::string password;
    std::string integratorKey;
    std::string userId;
    std::string apiPassword; ///< handed out at sign-in
    std::string accessToken; ///< accepted as a bearer token
    std::string accountId;
    std::string accountIdGuid;
    std::string accountName;
};

/// The credentials kept in the file, which is made, with secrets of its own, when it is missing or damaged.
Credentials prepareCredentials(const std::filesystem::path& file);

} // namespace norvane::sandbox
