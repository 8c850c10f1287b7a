#include <norvane/sdk/NVMCredentials.h>

namespace norvane {

CredentialQuery NVMCredentials::keychainQueryWithAccount(std::string_view account, std::string_view service) {
    return {std::string(account), std::string(service)};
}

#define NORVANE_QUERY(MAKER, SERVICE)                                                                        \
    CredentialQuery NVMCredentials::MAKER(std::string_view account) {                                        \
        return keychainQueryWithAccount(account, SERVICE);                                                   \
    }

// clang-format off: a table.
NORVANE_QUERY(authenticationMethodQueryWithAccount, "NVMKeychainServiceNameAuthenticationMethod")
NORVANE_QUERY(integratorKeyQueryWithAccount, "NVMKeychainServiceNameIntegratorKey")
NORVANE_QUERY(accountIdQueryWithAccount, "NVMKeychainServiceNameAccountId")
NORVANE_QUERY(accountNameQueryWithAccount, "NVMKeychainServiceNameAccountName")
NORVANE_QUERY(accountSettingsQueryWithAccount, "NVMKeychainServiceNameAccountSettings")
NORVANE_QUERY(consumerDisclosureQueryWithAccount, "NVMKeychainServiceNameConsumerDisclosure")
NORVANE_QUERY(consumerDisclosureIdQueryWithAccount, "NVMKeychainServiceNameConsumerDisclosureId")
NORVANE_QUERY(hostQueryWithAccount, "NVMKeychainServiceNameHost")
NORVANE_QUERY(apiPasswordQueryWithAccount, "NVMKeychainServiceNameApiPassword")
NORVANE_QUERY(accessTokenQueryWithAccount, "NVMKeychainServiceNameAccessToken")
NORVANE_QUERY(userNameQueryWithAccount, "NVMKeychainServiceNameUserName")
NORVANE_QUERY(userSettingsQueryWithAccount, "NVMKeychainServiceNameUserSettings")
NORVANE_QUERY(emailQueryWithAccount, "NVMKeychainServiceNameEmail")
// clang-format on

} // namespace norvane
