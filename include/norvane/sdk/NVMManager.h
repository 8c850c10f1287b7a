#pragma once

#include <norvane/platform/Result.h>
#include <norvane/platform/Url.h>
#include <norvane/platform/Value.h>
#include <norvane/sdk/Configuration.h>
#include <norvane/sdk/NVMAccount.h>
#include <norvane/sdk/NVMAccountInfo.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace norvane {

/// Whether a sign-in may ask the service: 0 online, any other value offline.
using NVMNetworkMode = std::uint64_t;
inline constexpr NVMNetworkMode NVMNetworkModeOnline = 0;
inline constexpr NVMNetworkMode NVMNetworkModeOffline = 1;

/// Starts the kit and signs its user in and out. All state is the process's; there are no instances. Any
/// thread may call; set-up and sign-out block on the store. A sign-out ends the sign-ins and fetches that are
/// under way: they store nothing more, and their completions get an error.
class NVMManager {
  public:
    using Text = std::optional<std::string>;
    /// Account and error of a sign-in; either may be nothing.
    using LoginCompletion = std::function<void(std::optional<NVMAccountInfo>, Failure)>;
    using Completion = std::function<void(Failure)>;

    NVMManager() = delete;

    static std::string name();         ///< "Norvane-Native-iOS-SDK"
    static std::string buildVersion(); ///< "2.1.5"

    // Set-up.

    /// Opens and migrates the store, passes the log level on and sets the default appearance; the kit counts
    /// as set up when the store opened. Required before a sign-in; calling it again repeats every step.
    static void setup();
    /// `setup`, then stores every entry: numbers as they are, anything else as lower-case text. What an
    /// earlier run stored applies until it is overwritten; keys that the kit does not know are kept and never
    /// read.
    static void setupWithConfiguration(const Dictionary& configuration);
    /// Why set-up is unfinished: the store's own error, or NVM_errorSetupIncomplete when it was never tried
    /// since the start or the last sign-out. Nothing while the kit is set up.
    static Failure setupError();

    /// A bit mask, 1 (errors only) at first; 3 adds warnings, all bits set is verbose.
    static void setLoggingLevel(std::uint64_t level);
    static std::uint64_t loggingLevel();

    // Configuration; see Configuration.h.
    static bool configuredValueForSetupKey(std::string_view key);
    static std::uint64_t configuredValueForSetupKeyTabDefaultsComparison();
    static const Dictionary& defaultConfigurations();
    static std::vector<std::string> setupConfigurationKeys();

    // How far the kit is; see SessionState.h.
    static void NVM_setupSuccessful(bool successful);
    static void NVM_loginSuccessful(bool successful);
    static void NVM_clearCredentialsAndCachedTemplatesSuccessful(bool successful);
    static bool NVM_isSetupAndLoginSuccessful();

    // Sign-in. Completions run where the service's answer arrives; an offline sign-in's on the main queue;
    // that of a sign-in refused for its input inside the call. An empty completion is allowed.

    /// With a user name and password. Without a completion nothing happens beyond the request. A sign-in that
    /// the service refuses calls the completion three times, deliberately: with the service's error under the
    /// domain "user.setup", with the fetch-account error, and with that error and an account info that has no
    /// account id.
    static void loginWithUserId(const Text& userId, const Text& password, const Text& integratorKey,
                                const std::optional<Url>& host, LoginCompletion completion);
    static void loginWithAccessToken(const Text& accessToken, const Text& accountId, const Text& userId,
                                     const Text& userName, const Text& email, const std::optional<Url>& host,
                                     const Text& integratorKey, NVMNetworkMode networkMode,
                                     LoginCompletion completion);
    static void loginWithApiPassword(const Text& apiPassword, const Text& accountId, const Text& userId,
                                     const Text& userName, const Text& email, const std::optional<Url>& host,
                                     const Text& integratorKey, NVMNetworkMode networkMode,
                                     LoginCompletion completion);
    /// The last step of every sign-in: stores the account, sets the kit up again, raises the signed-in flag
    /// and, online, fetches the account's additional data. The info handed over is as the account was at the
    /// start. An account that cannot be stored leaves the kit signed out.
    static void completeLoginForAccount(const std::shared_ptr<NVMAccount>& account,
                                        NVMNetworkMode networkMode, LoginCompletion completion);
    /// NVM_errorInvalidLoginParameters naming what is empty or absent, or nothing. `loginToken` is the access
    /// token or the API password.
    static Failure validateLoginToken(const Text& loginToken, const Text& accountId, const Text& userId,
                                      const Text& userName, const Text& email, const std::optional<Url>& host,
                                      const Text& integratorKey);
    /// Fetches the account's additional data and, when that succeeded, stores the account again; when it
    /// cannot be stored the kit is signed out.
    static void syncAdditionalDataForAccount(const std::shared_ptr<NVMAccount>& account,
                                             Completion completion);
    /// Stores the account; the completion runs before this returns. An error leaves the kit signed out.
    static void persistCredentialsForAccount(const NVMAccount& account, const Completion& completion);
    /// Takes up the sign-in of an earlier run: sets the kit up and raises the signed-in flag when an account
    /// is stored. Asks no service and writes no credential. An error says why the kit is not signed in.
    static Failure restoreSignIn();
    /// Signs out: removes cached envelopes and templates, also envelopes not yet uploaded, closes the store,
    /// clears the credentials and lowers both flags. True always.
    static bool clearCredentialsAndCachedTemplates();
};

} // namespace norvane
