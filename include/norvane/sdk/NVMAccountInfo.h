#pragma once

#include <norvane/platform/Url.h>
#include <norvane/sdk/NVMAccount.h>

#include <optional>
#include <string>

namespace norvane {

/// What the host receives after a sign-in: a copy of the account as it was then. It holds secrets, which are
/// overwritten when it goes.
struct NVMAccountInfo {
    std::optional<std::string> accountId;
    std::optional<std::string> accountName;
    std::optional<std::string> userId;
    std::optional<std::string> apiPassword;
    std::optional<std::string> integratorKey;
    std::optional<std::string> accessToken;
    std::optional<std::string> userName;
    std::optional<std::string> email;
    std::optional<Url> host; ///< the base address as it was given
    NVMAuthenticationMethod authenticationMethod = NVMAuthenticationMethodNone;

    NVMAccountInfo() = default;
    explicit NVMAccountInfo(const NVMAccount& account);
    NVMAccountInfo(const NVMAccountInfo&) = default;
    NVMAccountInfo& operator=(const NVMAccountInfo&) = default;
    ~NVMAccountInfo();
};

} // namespace norvane
