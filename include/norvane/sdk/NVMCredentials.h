#pragma once

#include <norvane/platform/Result.h>
#include <norvane/sdk/NVMAccount.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace norvane {

/// Names one item of the credential store.
struct CredentialQuery {
    std::string account; ///< the user id
    std::string service;
    friend bool operator==(const CredentialQuery&, const CredentialQuery&) = default;
};

/// Owner of the stored credentials: one credential-store item a field, under the signed-in user's id, which
/// itself is kept in the kit's defaults. Any thread may call, and several processes on one home; calls block
/// on the credential store, and one store, read or clearing is never seen half done by another.
class NVMCredentials {
  public:
    NVMCredentials() = delete;

    /// The stored account; null when none is stored, or a required item cannot be read.
    static std::shared_ptr<NVMAccount> primaryCredentials();
    /// Stores the account, wiping another user's items first. An error names the fields that could not be
    /// saved; the credentials are cleared then. A store out of reach keeps what it has, and whose it is. An
    /// account of method 0 is never stored.
    static Failure persistCredentialsForAccount(const NVMAccount& account);
    /// Deletes the items that sign in. The account name, both settings, the disclosure, its id and the user
    /// id stay, deliberately, until the next account is stored over them. The error of the first item that
    /// cannot be deleted; the others go all the same.
    static Failure clearCredentials();

    /// The user whose items are stored.
    static std::optional<std::string> userId();
    static Failure setUserId(const std::optional<std::string>& userId);

    static CredentialQuery keychainQueryWithAccount(std::string_view account, std::string_view service);
    static CredentialQuery authenticationMethodQueryWithAccount(std::string_view account);
    static CredentialQuery integratorKeyQueryWithAccount(std::string_view account);
    static CredentialQuery accountIdQueryWithAccount(std::string_view account);
    static CredentialQuery accountNameQueryWithAccount(std::string_view account);
    static CredentialQuery accountSettingsQueryWithAccount(std::string_view account);
    static CredentialQuery consumerDisclosureQueryWithAccount(std::string_view account);
    static CredentialQuery consumerDisclosureIdQueryWithAccount(std::string_view account);
    static CredentialQuery hostQueryWithAccount(std::string_view account);
    static CredentialQuery apiPasswordQueryWithAccount(std::string_view account);
    static CredentialQuery accessTokenQueryWithAccount(std::string_view account);
    static CredentialQuery userNameQueryWithAccount(std::string_view account);
    static CredentialQuery userSettingsQueryWithAccount(std::string_view account);
    static CredentialQuery emailQueryWithAccount(std::string_view account);

    /// The decimal number of a stored method; 0 when the text is none.
    static NVMAuthenticationMethod makeAuthenticationMethodFromString(const std::optional<std::string>& text);
    /// Appends "<failingKey>:<errorDetail>".
    static void updateFailedKeys(std::vector<std::string>& failedKeys, std::string_view failingKey,
                                 std::string_view errorDetail);
    /// A place for logging ("save" and "fetch" failures) that deliberately writes nothing.
    static void logError(const Failure& error, std::string_view action, std::string_view key);
};

} // namespace norvane
