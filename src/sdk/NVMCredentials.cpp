#include "src/platform/FileLock.h"
#include "src/sdk/SettingsArchive.h"

#include <norvane/platform/Files.h>
#include <norvane/platform/Platform.h>
#include <norvane/sdk/Configuration.h>
#include <norvane/sdk/Errors.h>
#include <norvane/sdk/NVMCredentials.h>

#include <charconv>
#include <mutex>

namespace norvane {
namespace {

using Text = std::optional<std::string>;

constexpr std::string_view kUserIdKey = "NVMUserId";
constexpr std::string_view kRedacted = "-redacted-";

/// Guards the stored credentials as a whole, against other processes on the same home too: the items and the
/// user id belong together. A home in which no lock can be made cannot be written to by anybody else either,
/// and a host without a home shares nothing.
class StoredCredentialsLock {
  public:
    StoredCredentialsLock()
        : here_(mutex()) {
        const auto& files = Platform::current().files;
        if (files) everywhere_.emplace(FileLock::acquire(files->supportFolder() / "account.lock"));
    }

  private:
    static std::mutex& mutex() {
        static std::mutex made;
        return made;
    }
    const std::lock_guard<std::mutex> here_;
    std::optional<Result<FileLock>> everywhere_;
};

Text fetchText(const CredentialQuery& query, std::string_view key) {
    const auto item = Platform::current().credentials->fetch(query.service, query.account);
    if (!item) {
        NVMCredentials::logError(item.error(), "fetch", key);
        return std::nullopt;
    }
    if (!*item) return std::nullopt;
    return std::string((*item)->view());
}

std::optional<Dictionary> fetchSettings(const CredentialQuery& query, std::string_view key) {
    const Text archive = fetchText(query, key);
    return archive ? unarchivedSettings(*archive) : std::nullopt;
}

/// Saves items one after another and remembers which could not be saved.
class ItemSaver {
  public:
    /// An absent text cannot be saved.
    void save(std::string_view key, const CredentialQuery& query, const Text& text, std::string_view detail) {
        Failure failure = NVM_errorInvalidInput();
        if (text) {
            failure =
                Platform::current().credentials->save(query.service, query.account, Data::secret(*text));
        }
        note(key, failure, detail);
    }
    void save(std::string_view key, const CredentialQuery& query, const Text& text) {
        save(key, query, text, text ? std::string_view(*text) : "(null)");
    }
    void saveSettings(std::string_view key, const CredentialQuery& query,
                      const std::optional<Dictionary>& settings, std::string_view detailName) {
        if (!settings) return;
        save(key, query, archivedSettings(*settings),
             "-" + std::string(detailName) + "-keys-count:" + std::to_string(settings->size()) + "-");
    }
    void note(std::string_view key, const Failure& failure, std::string_view detail) {
        if (!failure) return;
        NVMCredentials::logError(failure, "save", key);
        NVMCredentials::updateFailedKeys(failedKeys_, key, detail);
    }

    const std::vector<std::string>& failedKeys() const { return failedKeys_; }

  private:
    std::vector<std::string> failedKeys_;
};

/// Characters as UTF-16 counts them, which is how the length of a text has always been reported.
std::size_t utf16Length(std::string_view text) {
    std::size_t length = 0;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if ((byte & 0xC0) != 0x80) length += byte >= 0xF0 ? 2 : 1;
    }
    return length;
}

/// The first error; the other items are deleted all the same.
Failure clearStoredItems() {
    const Text user = NVMCredentials::userId();
    if (!user) return std::nullopt;
    Failure first;
    for (const auto& query :
         {NVMCredentials::integratorKeyQueryWithAccount(*user),
          NVMCredentials::accountIdQueryWithAccount(*user), NVMCredentials::hostQueryWithAccount(*user),
          NVMCredentials::authenticationMethodQueryWithAccount(*user),
          NVMCredentials::apiPasswordQueryWithAccount(*user),
          NVMCredentials::accessTokenQueryWithAccount(*user), NVMCredentials::userNameQueryWithAccount(*user),
          NVMCredentials::emailQueryWithAccount(*user)}) {
        Failure failure = Platform::current().credentials->remove(query.service, query.account);
        NVMCredentials::logError(failure, "delete", query.service);
        if (!first) first = std::move(failure);
    }
    return first;
}

void saveProfile(ItemSaver& saver, const NVMAccount& account, std::string_view user) {
    using C = NVMCredentials;
    saver.save("AuthenticationMethod", C::authenticationMethodQueryWithAccount(user),
               std::to_string(account.authenticationMethod));
    saver.save("IntegratorKey", C::integratorKeyQueryWithAccount(user), account.integratorKey, kRedacted);
    saver.save("AccountId", C::accountIdQueryWithAccount(user), account.accountId);
    if (account.accountName) {
        saver.save("AccountName", C::accountNameQueryWithAccount(user), account.accountName);
    }
    saver.saveSettings("AccountSettings", C::accountSettingsQueryWithAccount(user), account.accountSettings,
                       "account-settings");
    if (account.consumerDisclosure) {
        saver.save(
            "ConsumerDisclosure", C::consumerDisclosureQueryWithAccount(user), account.consumerDisclosure,
            "-consumerDisclosure-length:" + std::to_string(utf16Length(*account.consumerDisclosure)) + "-");
    }
    if (account.consumerDisclosureId) {
        saver.save("ConsumerDisclosureId", C::consumerDisclosureIdQueryWithAccount(user),
                   account.consumerDisclosureId);
    }
    saver.save("Host", C::hostQueryWithAccount(user),
               account.host ? Text(account.host->absoluteString()) : std::nullopt);
    saver.save("UserName", C::userNameQueryWithAccount(user), account.userName);
    saver.saveSettings("UserSettings", C::userSettingsQueryWithAccount(user), account.userSettings,
                       "user-settings");
    saver.save("Email", C::emailQueryWithAccount(user), account.email);
}

} // namespace

std::shared_ptr<NVMAccount> NVMCredentials::primaryCredentials() {
    const StoredCredentialsLock lock;
    const Text user = userId();
    if (!user) return nullptr;
    auto account = std::make_shared<NVMAccount>();
    account->userId = user;
    account->authenticationMethod = makeAuthenticationMethodFromString(
        fetchText(authenticationMethodQueryWithAccount(*user), "AuthenticationMethod"));
    if (account->authenticationMethod == NVMAuthenticationMethodAccessToken) {
        account->accessToken = fetchText(accessTokenQueryWithAccount(*user), "AccessToken");
        if (!account->accessToken) return nullptr;
    } else if (account->authenticationMethod == NVMAuthenticationMethodApiPassword) {
        account->apiPassword = fetchText(apiPasswordQueryWithAccount(*user), "ApiPassword");
        if (!account->apiPassword) return nullptr;
    } else {
        return nullptr;
    }
    account->integratorKey = fetchText(integratorKeyQueryWithAccount(*user), "IntegratorKey");
    account->accountId = fetchText(accountIdQueryWithAccount(*user), "AccountId");
    account->host = Url::parse(fetchText(hostQueryWithAccount(*user), "Host").value_or(""));
    account->userName = fetchText(userNameQueryWithAccount(*user), "UserName");
    account->email = fetchText(emailQueryWithAccount(*user), "Email");
    if (!account->integratorKey || !account->accountId || !account->host || !account->userName ||
        !account->email) {
        return nullptr;
    }
    account->accountName = fetchText(accountNameQueryWithAccount(*user), "AccountName");
    account->accountSettings = fetchSettings(accountSettingsQueryWithAccount(*user), "AccountSettings");
    account->consumerDisclosure = fetchText(consumerDisclosureQueryWithAccount(*user), "ConsumerDisclosure");
    account->consumerDisclosureId =
        fetchText(consumerDisclosureIdQueryWithAccount(*user), "ConsumerDisclosureId");
    account->userSettings = fetchSettings(userSettingsQueryWithAccount(*user), "UserSettings");
    return account;
}

Failure NVMCredentials::persistCredentialsForAccount(const NVMAccount& account) {
    const StoredCredentialsLock lock;
    const Text earlierUser = userId();
    const Failure leftBehind = earlierUser != account.userId ? clearStoredItems() : std::nullopt;
    ItemSaver saver;
    saver.note("UserId", account.userId ? setUserId(account.userId) : Failure(NVM_errorInvalidInput()),
               account.userId.value_or("(null)"));
    const bool byToken = account.authenticationMethod == NVMAuthenticationMethodAccessToken;
    const bool byPassword = account.authenticationMethod == NVMAuthenticationMethodApiPassword;
    if (account.userId) {
        saveProfile(saver, account, *account.userId);
        if (byToken) {
            saver.save("AccessToken", accessTokenQueryWithAccount(*account.userId), account.accessToken,
                       kRedacted);
        } else if (byPassword) {
            saver.save("ApiPassword", apiPasswordQueryWithAccount(*account.userId), account.apiPassword,
                       kRedacted);
        }
    }
    if (saver.failedKeys().empty() && (byToken || byPassword)) return std::nullopt;
    clearStoredItems();
    // An unreachable store still has the earlier user's items; forgetting whose they are would orphan them.
    if (leftBehind) logError(setUserId(earlierUser), "save", kUserIdKey);
    return NVM_errorDataPersistenceFailedWithKeys(saver.failedKeys());
}

Failure NVMCredentials::clearCredentials() {
    const StoredCredentialsLock lock;
    return clearStoredItems();
}

std::optional<std::string> NVMCredentials::userId() {
    return nvm_getDefaultsStringForKey(kUserIdKey).stringValue();
}

Failure NVMCredentials::setUserId(const std::optional<std::string>& userId) {
    return nvm_setDefaults(userId, kUserIdKey);
}

NVMAuthenticationMethod
NVMCredentials::makeAuthenticationMethodFromString(const std::optional<std::string>& text) {
    NVMAuthenticationMethod method = NVMAuthenticationMethodNone;
    if (!text) return method;
    const char* end = text->data() + text->size();
    const auto [stop, code] = std::from_chars(text->data(), end, method);
    return code == std::errc() && stop == end ? method : NVMAuthenticationMethodNone;
}

void NVMCredentials::updateFailedKeys(std::vector<std::string>& failedKeys, std::string_view failingKey,
                                      std::string_view errorDetail) {
    failedKeys.push_back(std::string(failingKey) + ":" + std::string(errorDetail));
}

void NVMCredentials::logError(const Failure&, std::string_view, std::string_view) {}

} // namespace norvane
