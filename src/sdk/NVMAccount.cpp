#include <norvane/sdk/NVMAccount.h>

namespace norvane {
namespace {

bool readsTrue(const std::optional<Dictionary>& settings, std::string_view name) {
    if (!settings) return false;
    const auto found = settings->find(name);
    return found != settings->end() && found->second.boolValue();
}

} // namespace

NVMAccount::~NVMAccount() {
    if (apiPassword) cleanse(*apiPassword);
    if (accessToken) cleanse(*accessToken);
}

std::shared_ptr<NVMAccount> NVMAccount::withUserId(Text userId, Text userName, Text email, Text accountId,
                                                   std::optional<Url> host, Text integratorKey) {
    auto account = std::make_shared<NVMAccount>();
    account->userId = std::move(userId);
    account->userName = std::move(userName);
    account->email = std::move(email);
    account->accountId = std::move(accountId);
    account->host = std::move(host);
    account->integratorKey = std::move(integratorKey);
    return account;
}

std::shared_ptr<NVMAccount> NVMAccount::withAccessToken(Text accessToken, Text userId, Text userName,
                                                        Text email, Text accountId, std::optional<Url> host,
                                                        Text integratorKey) {
    auto account = withUserId(std::move(userId), std::move(userName), std::move(email), std::move(accountId),
                              std::move(host), std::move(integratorKey));
    account->accessToken = std::move(accessToken);
    account->authenticationMethod = NVMAuthenticationMethodAccessToken;
    return account;
}

std::shared_ptr<NVMAccount> NVMAccount::withApiPassword(Text apiPassword, Text userId, Text userName,
                                                        Text email, Text accountId, std::optional<Url> host,
                                                        Text integratorKey) {
    auto account = withUserId(std::move(userId), std::move(userName), std::move(email), std::move(accountId),
                              std::move(host), std::move(integratorKey));
    account->apiPassword = std::move(apiPassword);
    account->authenticationMethod = NVMAuthenticationMethodApiPassword;
    return account;
}

std::shared_ptr<NVMAccount> NVMAccount::withUserId(Text userId, Text userName, Text email, Text apiPassword,
                                                   Text accountId, std::optional<Url> host,
                                                   Text integratorKey) {
    return withApiPassword(std::move(apiPassword), std::move(userId), std::move(userName), std::move(email),
                           std::move(accountId), std::move(host), std::move(integratorKey));
}

bool NVMAccount::canOfflineSend() const {
    return readsTrue(accountSettings, "inSessionEnabled") &&
           readsTrue(accountSettings, "allowOfflineSigning");
}

int NVMAccount::shouldSignAndReturnWithMethod() const {
    if (!userSettings) return -1;
    const auto found = userSettings->find("selfSignedRecipientEmailDocument");
    if (found == userSettings->end()) return -1;
    if (found->second == Value("include_link")) return 0;
    return found->second == Value("include_pdf") ? 1 : -1;
}

NVMAccount::Text NVMAccount::membershipId() const {
    if (!accountId || !userId) return std::nullopt;
    return *accountId + "+" + *userId;
}

} // namespace norvane
