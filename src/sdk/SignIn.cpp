#include "src/sdk/SetUp.h"

#include <norvane/api/NVESAccounts.h>
#include <norvane/api/NVMApi.h>
#include <norvane/platform/Json.h>
#include <norvane/platform/Platform.h>
#include <norvane/sdk/Errors.h>
#include <norvane/sdk/NVMCredentials.h>
#include <norvane/sdk/NVMManager.h>
#include <norvane/sdk/SessionState.h>

namespace norvane {
namespace {

/// Whether the text can stand in JSON as it is.
bool isWellFormed(const std::optional<std::string>& text) {
    if (!text) return false;
    const auto read = parseJson(writeJson(Array{*text}));
    return read && *read->asArray()->front().asString() == *text;
}

void call(const NVMManager::LoginCompletion& completion, std::optional<NVMAccountInfo> info, Failure error) {
    if (completion) completion(std::move(info), std::move(error));
}

/// What the service answered to a password sign-in. The steps do not end at an error: a refusal is told up to
/// three times, deliberately.
void passwordSignInAnswered(const std::shared_ptr<NVESLoginInformation>& answer,
                            const std::optional<NVMError>& error, const Url& host,
                            const std::optional<std::string>& integratorKey,
                            const NVMManager::LoginCompletion& completion) {
    if (!completion) return;
    if (error) completion(std::nullopt, NVM_errorFromServiceResponseError(*error, "user.setup"));
    if (!answer) {
        Platform::current().log->write(LogLevel::Info, "response can't be nil");
        completion(std::nullopt, NVM_errorFetchAccountInformation());
    }
    NVMManager::completeLoginForAccount(NVMAccount::withAccountInfo(answer.get(), host, integratorKey),
                                        NVMNetworkModeOnline, completion);
}

/// Without stored credentials nobody is signed in, whoever was before.
Failure store(const NVMAccount& account) {
    Failure error = NVMCredentials::persistCredentialsForAccount(account);
    if (error) norvane::NVM_loginSuccessful(false);
    return error;
}

/// Fetches the account's additional data and stores it with the account, unless the session has ended by
/// then.
void syncAdditionalData(const std::shared_ptr<NVMAccount>& account, std::uint64_t session,
                        NVMManager::Completion completion) {
    account->syncAdditionalDataWithCompletion(
        [account, session, completion = std::move(completion)](Failure error) {
            if (!error) error = inSession(session, [&] { return store(*account); });
            if (completion) completion(std::move(error));
        });
}

/// Refuses a sign-in with missing values, else completes it.
void signInWithToken(const std::shared_ptr<NVMAccount>& account, const std::optional<std::string>& token,
                     NVMNetworkMode networkMode, NVMManager::LoginCompletion completion) {
    if (auto error =
            NVMManager::validateLoginToken(token, account->accountId, account->userId, account->userName,
                                           account->email, account->host, account->integratorKey)) {
        call(completion, NVMAccountInfo(*account), std::move(error));
        return;
    }
    NVMManager::completeLoginForAccount(account, networkMode, std::move(completion));
}

} // namespace

void NVMManager::loginWithUserId(const Text& userId, const Text& password, const Text& integratorKey,
                                 const std::optional<Url>& host, LoginCompletion completion) {
    if (!isWellFormed(userId) || !isWellFormed(password) || !isWellFormed(integratorKey) || !host) {
        call(completion, std::nullopt, NVM_errorInvalidInput());
        return;
    }
    NVMApi::loginWithUserId(
        *userId, *password, *integratorKey, *host,
        [host = *host, integratorKey, completion = std::move(completion)](
            const std::shared_ptr<NVESLoginInformation>& answer, const std::optional<NVMError>& error) {
            passwordSignInAnswered(answer, error, host, integratorKey, completion);
        });
}

void NVMManager::loginWithAccessToken(const Text& accessToken, const Text& accountId, const Text& userId,
                                      const Text& userName, const Text& email, const std::optional<Url>& host,
                                      const Text& integratorKey, NVMNetworkMode networkMode,
                                      LoginCompletion completion) {
    signInWithToken(
        NVMAccount::withAccessToken(accessToken, userId, userName, email, accountId, host, integratorKey),
        accessToken, networkMode, std::move(completion));
}

void NVMManager::loginWithApiPassword(const Text& apiPassword, const Text& accountId, const Text& userId,
                                      const Text& userName, const Text& email, const std::optional<Url>& host,
                                      const Text& integratorKey, NVMNetworkMode networkMode,
                                      LoginCompletion completion) {
    signInWithToken(
        NVMAccount::withApiPassword(apiPassword, userId, userName, email, accountId, host, integratorKey),
        apiPassword, networkMode, std::move(completion));
}

void NVMManager::completeLoginForAccount(const std::shared_ptr<NVMAccount>& account,
                                         NVMNetworkMode networkMode, LoginCompletion completion) {
    const NVMAccountInfo info(*account);
    if (!account->accountId) {
        call(completion, info, NVM_errorFetchAccountInformation());
        return;
    }
    const std::uint64_t session = beginNextSession();
    Failure error = inSession(session, [&] {
        NVMCredentials::clearCredentials(); // a store that cannot delete cannot save: that error is told
        return store(*account);
    });
    if (!error) {
        setup();
        error = inSession(session, [] {
            norvane::NVM_loginSuccessful(true);
            return setupError();
        });
    }
    if (error) {
        call(completion, info, std::move(error));
        return;
    }
    if (networkMode != NVMNetworkModeOnline) {
        Platform::current().executors->mainQueue()->async(
            [info, completion = std::move(completion)] { call(completion, info, std::nullopt); });
        return;
    }
    syncAdditionalData(account, session, [info, completion = std::move(completion)](const Failure& missing) {
        call(completion, info,
             missing ? Failure(NVM_errorFromAdditionalDataFetchForAccountError(*missing)) : std::nullopt);
    });
}

Failure NVMManager::validateLoginToken(const Text& loginToken, const Text& accountId, const Text& userId,
                                       const Text& userName, const Text& email,
                                       const std::optional<Url>& host, const Text& integratorKey) {
    const std::pair<const char*, const Text&> values[] = {
        {"AccessToken", loginToken}, {"AccountId", accountId}, {"UserId", userId},
        {"UserName", userName},      {"Email", email},         {"IntegratorKey", integratorKey}};
    std::vector<std::string> missing;
    for (const auto& [valueName, value] : values) {
        if (!value || value->empty()) missing.emplace_back(valueName);
    }
    if (!host) missing.emplace_back("Host");
    if (missing.empty()) return std::nullopt;
    return NVM_errorInvalidLoginParameters(missing);
}

void NVMManager::syncAdditionalDataForAccount(const std::shared_ptr<NVMAccount>& account,
                                              Completion completion) {
    syncAdditionalData(account, sessionNumber(), std::move(completion));
}

void NVMManager::persistCredentialsForAccount(const NVMAccount& account, const Completion& completion) {
    Failure error = store(account);
    if (completion) completion(std::move(error));
}

} // namespace norvane
