#include <norvane/api/NVESAccounts.h>
#include <norvane/sdk/NVMAccount.h>

namespace norvane {

std::shared_ptr<NVMAccount> NVMAccount::withAccountInfo(const NVESLoginInformation* accountInfo,
                                                        std::optional<Url> host, Text integratorKey) {
    const bool hasAccount = accountInfo && accountInfo->loginAccounts && !accountInfo->loginAccounts->empty();
    const NVESLoginAccount login = hasAccount ? *accountInfo->loginAccounts->front() : NVESLoginAccount();
    return withApiPassword(accountInfo ? accountInfo->apiPassword : Text(), login.userId, login.userName,
                           login.email, login.accountId, std::move(host), std::move(integratorKey));
}

} // namespace norvane
