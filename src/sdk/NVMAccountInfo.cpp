#include <norvane/sdk/NVMAccountInfo.h>

namespace norvane {

NVMAccountInfo::NVMAccountInfo(const NVMAccount& account)
    : accountId(account.accountId)
    , accountName(account.accountName)
    , userId(account.userId)
    , apiPassword(account.apiPassword)
    , integratorKey(account.integratorKey)
    , accessToken(account.accessToken)
    , userName(account.userName)
    , email(account.email)
    , host(account.host)
    , authenticationMethod(account.authenticationMethod) {}

NVMAccountInfo::~NVMAccountInfo() {
    if (apiPassword) cleanse(*apiPassword);
    if (accessToken) cleanse(*accessToken);
}

} // namespace norvane
