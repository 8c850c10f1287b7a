#pragma once

#include <norvane/platform/Result.h>
#include <norvane/platform/Url.h>
#include <norvane/platform/Value.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace norvane {

struct NVESLoginInformation;
struct NVMRecipient;

/// How an account proves itself to the service.
using NVMAuthenticationMethod = std::uint64_t;
inline constexpr NVMAuthenticationMethod NVMAuthenticationMethodNone = 0;
inline constexpr NVMAuthenticationMethod NVMAuthenticationMethodApiPassword = 1;
inline constexpr NVMAuthenticationMethod NVMAuthenticationMethodAccessToken = 2;

/// The signed-in account. It lives in the credential store and is read when needed (see `NVMCredentials`);
/// nothing keeps one across calls. Its secrets are overwritten when it goes.
struct NVMAccount : std::enable_shared_from_this<NVMAccount> {
    using Text = std::optional<std::string>;
    /// Called exactly once, where the service's answer arrives, with the service's error or nothing.
    using Completion = std::function<void(Failure)>;

    Text userId;
    Text accountId;
    Text accountName;
    Text userName;
    Text email;
    Text integratorKey;
    std::optional<Url> host; ///< the service's base address
    Text apiPassword;        ///< used with NVMAuthenticationMethodApiPassword
    Text accessToken;        ///< used with NVMAuthenticationMethodAccessToken
    NVMAuthenticationMethod authenticationMethod = NVMAuthenticationMethodNone;
    std::optional<Dictionary> accountSettings; ///< setting name to value
    std::optional<Dictionary> userSettings;    ///< setting name to value
    Text consumerDisclosure;
    Text consumerDisclosureId;
    bool hasAdoptedSignature = false;

    NVMAccount() = default;
    NVMAccount(const NVMAccount&) = default;
    NVMAccount& operator=(const NVMAccount&) = default;
    ~NVMAccount();

    /// Method 0: such an account cannot be stored.
    static std::shared_ptr<NVMAccount> withUserId(Text userId, Text userName, Text email, Text accountId,
                                                  std::optional<Url> host, Text integratorKey);
    static std::shared_ptr<NVMAccount> withAccessToken(Text accessToken, Text userId, Text userName,
                                                       Text email, Text accountId, std::optional<Url> host,
                                                       Text integratorKey);
    static std::shared_ptr<NVMAccount> withApiPassword(Text apiPassword, Text userId, Text userName,
                                                       Text email, Text accountId, std::optional<Url> host,
                                                       Text integratorKey);
    /// The same as `withApiPassword`.
    static std::shared_ptr<NVMAccount> withUserId(Text userId, Text userName, Text email, Text apiPassword,
                                                  Text accountId, std::optional<Url> host,
                                                  Text integratorKey);
    /// The first of the login accounts, with the record's API password; fields stay absent where the record,
    /// or a null one, has nothing.
    static std::shared_ptr<NVMAccount> withAccountInfo(const NVESLoginInformation* accountInfo,
                                                       std::optional<Url> host, Text integratorKey);

    /// Whether the account settings "inSessionEnabled" and "allowOfflineSigning" both read true.
    bool canOfflineSend() const;
    /// The user setting "selfSignedRecipientEmailDocument": "include_link" 0, "include_pdf" 1, else -1.
    int shouldSignAndReturnWithMethod() const;

    /// "<accountId>+<userId>"; nothing when either is absent.
    Text membershipId() const;
    /// Whether user name and e-mail equal the given ones, ignoring case and diacritics. An absent text equals
    /// none.
    bool caseInsensitivelyMatchesName(const Text& name, const Text& andEmail) const;
    /// The same for the recipient's name and e-mail; false for kinds that have none.
    bool caseInsensitivelyMatchesNameAndEmailOfRecipient(const NVMRecipient& recipient) const;
    /// The same for an in-person signer's host; false for other kinds.
    bool caseInsensitivelyMatchesHostNameAndHostEmailOfRecipient(const NVMRecipient& recipient) const;

    // Each asks the service and stores the answer here. The account must be owned by a shared_ptr; it is kept
    // until the answer came. On an error nothing of it changes.
    void syncAccountNameWithCompletion(Completion completion);
    void syncAccountSettingsWithCompletion(Completion completion);
    void syncUserSettingsWithCompletion(Completion completion);
    void syncConsumerDisclosureWithCompletion(Completion completion);
    /// All of the above, the disclosure only when the fetched settings allow offline sending. The error is
    /// that of whichever fetch ended last: a later success clears an earlier error, deliberately.
    void syncAdditionalDataWithCompletion(Completion completion);
};

} // namespace norvane
