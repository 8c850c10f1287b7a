#include "tests/support/SandboxKitFixture.h"

#include <norvane/sdk/Configuration.h>
#include <norvane/sdk/NVMCredentials.h>
#include <norvane/sdk/SessionState.h>
#include <norvane/store/ObjectStore.h>

#include <fstream>
#include <thread>

namespace norvane {
namespace {

class SignInTest : public SandboxKitFixture {
  protected:
    /// Signs in with the token; the answer, and whether it came on the calling thread: inside the call.
    std::pair<SignInAnswer, bool> signInWithToken(const std::string& email, const std::optional<Url>& at,
                                                  NVMNetworkMode mode) const {
        const auto done = std::make_shared<Event>();
        const auto answer = std::make_shared<SignInAnswer>();
        const auto thread = std::make_shared<std::thread::id>();
        NVMManager::loginWithAccessToken(user().accessToken, user().accountId, user().userId, user().userName,
                                         email, at, user().integratorKey, mode,
                                         [=](std::optional<NVMAccountInfo> info, Failure error) {
                                             *answer = {std::move(info), std::move(error)};
                                             *thread = std::this_thread::get_id();
                                             done->set();
                                         });
        if (!done->wait()) ADD_FAILURE() << "the sign-in did not end";
        return {*answer, *thread == std::this_thread::get_id()};
    }
    static std::string reason(const Failure& error) { return error ? error->failureReason() : ""; }
};

TEST_F(SignInTest, WithAPasswordStoresTheAccountAndItsAdditionalData) {
    NVMManager::setup();
    const auto answers = signInWithPassword(user().password);
    ASSERT_EQ(answers.size(), 1u);
    EXPECT_EQ(answers[0].error, std::nullopt);
    ASSERT_TRUE(answers[0].info);
    EXPECT_EQ(answers[0].info->accountId, user().accountId);
    EXPECT_EQ(answers[0].info->host, host()) << "the address as it was given, not the account's own";
    EXPECT_TRUE(NVMManager::NVM_isSetupAndLoginSuccessful());

    const auto stored = NVMCredentials::primaryCredentials();
    ASSERT_NE(stored, nullptr);
    EXPECT_EQ(stored->apiPassword, user().apiPassword);
    EXPECT_EQ(stored->accountName, user().accountName);
    EXPECT_TRUE(stored->canOfflineSend());
    EXPECT_EQ(stored->shouldSignAndReturnWithMethod(), 0);
    EXPECT_TRUE(stored->consumerDisclosureId);
    EXPECT_NE(stored->consumerDisclosure.value_or("").find("Electronic records"), std::string::npos);
}

TEST_F(SignInTest, RefusedByTheServiceIsToldThreeTimes) {
    NVMManager::setup();
    const auto answers = signInWithPassword("wrong", 3);
    ASSERT_EQ(answers.size(), 3u);
    EXPECT_EQ(answers[0].error->domain, "user.setup");
    EXPECT_EQ(answers[0].error->code, 401);
    EXPECT_FALSE(answers[0].info);
    EXPECT_EQ(reason(answers[1].error), "USER_LOGIN_INFORMATION_ERROR");
    EXPECT_FALSE(answers[1].info);
    EXPECT_EQ(reason(answers[2].error), "USER_LOGIN_INFORMATION_ERROR");
    ASSERT_TRUE(answers[2].info);
    EXPECT_EQ(answers[2].info->accountId, std::nullopt);
    EXPECT_FALSE(NVMManager::NVM_isSetupAndLoginSuccessful());
    EXPECT_EQ(credentials_->itemCount(), 0u);
}

TEST_F(SignInTest, WithMissingValuesIsRefusedInsideTheCall) {
    const auto [answer, isInside] = signInWithToken("", std::nullopt, NVMNetworkModeOnline);
    EXPECT_TRUE(isInside);
    EXPECT_EQ(answer.error->localizedDescription(), "Invalid login information for given User: Email, Host");
    EXPECT_EQ(credentials_->itemCount(), 0u);

    Failure broken;
    NVMManager::loginWithUserId(
        "ann\xff", "secret", "key", host(),
        [&](std::optional<NVMAccountInfo>, Failure error) { broken = std::move(error); });
    EXPECT_EQ(reason(broken), "SDK_INVALID_INPUT");
    EXPECT_TRUE(service_.requests().empty());
}

TEST_F(SignInTest, IntoALockedStoreSignsOutWhoeverWasSignedIn) {
    ASSERT_EQ(signInWithToken(user().email, host(), NVMNetworkModeOffline).first.error, std::nullopt);
    credentials_->breakWith(NVMError::make("test", 1, "locked"));
    const auto [answer, isInside] = signInWithToken(user().email, host(), NVMNetworkModeOnline);
    ASSERT_TRUE(answer.error);
    EXPECT_EQ(answer.error->domain, "user.persist.error");
    EXPECT_NE(answer.error->localizedDescription().find("AuthenticationMethod:2, IntegratorKey:-redacted-"),
              std::string::npos);
    EXPECT_EQ(answer.error->localizedDescription().find(user().accessToken), std::string::npos);
    EXPECT_FALSE(NVMManager::NVM_isSetupAndLoginSuccessful());
    EXPECT_TRUE(service_.requests().empty());
    credentials_->breakWith(std::nullopt);
}

TEST_F(SignInTest, OfflineAsksNobody) {
    const auto [answer, isInside] = signInWithToken(user().email, host(), NVMNetworkModeOffline);
    EXPECT_FALSE(isInside);
    EXPECT_EQ(answer.error, std::nullopt);
    EXPECT_TRUE(NVMManager::NVM_isSetupAndLoginSuccessful());
    EXPECT_FALSE(NVMCredentials::primaryCredentials()->canOfflineSend());
    EXPECT_TRUE(service_.requests().empty());
}

TEST_F(SignInTest, TellsWhatAdditionalDataCouldNotBeFetched) {
    service_.addFault("GET /v2/accounts/** status=500 times=0");
    const auto [answer, isInside] = signInWithToken(user().email, host(), NVMNetworkModeOnline);
    ASSERT_TRUE(answer.error);
    EXPECT_EQ(answer.error->domain, "user.additional.data.fetch.error");
    EXPECT_EQ(answer.error->code, 500);
    EXPECT_TRUE(NVMManager::NVM_isSetupAndLoginSuccessful()) << "signed in all the same";
    EXPECT_EQ(service_.requests().size(), 3u) << "no disclosure without settings";
}

TEST_F(SignInTest, IsTakenUpByALaterRun) {
    EXPECT_EQ(reason(NVMManager::restoreSignIn()), "USER_NOT_LOGGED_IN_ERROR");
    signIn();
    const std::size_t asked = service_.requests().size();
    ObjectStore::closeDefaultStore();
    NVM_clearCredentialsAndCachedTemplatesSuccessful(true);
    restart();
    EXPECT_EQ(NVMManager::restoreSignIn(), std::nullopt);
    EXPECT_TRUE(NVMManager::NVM_isSetupAndLoginSuccessful());
    EXPECT_EQ(service_.requests().size(), asked);
}

TEST_F(SignInTest, EndsWithTheSignOutEvenWhenAnAnswerIsStillToCome) {
    service_.addFault("GET /v2/accounts/*/settings delay=300");
    NVMManager::setup();
    const auto done = std::make_shared<Event>();
    const auto told = std::make_shared<Failure>();
    NVMManager::loginWithAccessToken(user().accessToken, user().accountId, user().userId, user().userName,
                                     user().email, host(), user().integratorKey, NVMNetworkModeOnline,
                                     [=](const std::optional<NVMAccountInfo>&, Failure error) {
                                         *told = std::move(error);
                                         done->set();
                                     });
    EXPECT_TRUE(NVMManager::clearCredentialsAndCachedTemplates());
    ASSERT_TRUE(done->wait());
    EXPECT_TRUE(*told);
    EXPECT_EQ(NVMCredentials::primaryCredentials(), nullptr);
    EXPECT_FALSE(NVMManager::NVM_isSetupAndLoginSuccessful());
    EXPECT_EQ(reason(NVMManager::setupError()), "SDK_SETUP_ERROR");
}

TEST_F(SignInTest, NeedsAStoreThatOpens) {
    const auto file = platform().files->supportFolder() / "NorvaneSDK.sqlite";
    std::ofstream(file) << "this is no store";
    NVMManager::setup();
    EXPECT_TRUE(NVMManager::setupError());
    const auto [answer, isInside] = signInWithToken(user().email, host(), NVMNetworkModeOffline);
    EXPECT_EQ(answer.error, NVMManager::setupError());
    EXPECT_FALSE(NVMManager::NVM_isSetupAndLoginSuccessful());
    std::string kept;
    std::getline(std::ifstream(file), kept);
    EXPECT_EQ(kept, "this is no store");
    log_->expect("sign-out");
}

TEST_F(SignInTest, KeepsConfigurationInLowerCase) {
    NVMManager::setupWithConfiguration({{std::string(NVM_SETUP_DISABLE_CONTACTS_USAGE_KEY), "TRUE"},
                                        {std::string(NVM_SETUP_TAB_DEFAULTS_COMPARISION), 2}});
    EXPECT_EQ(nvm_getDefaultsStringForKey(NVM_SETUP_DISABLE_CONTACTS_USAGE_KEY), Value("true"));
    EXPECT_TRUE(nvm_getDefaultsStringForKey(NVM_SETUP_TAB_DEFAULTS_COMPARISION).isInteger());
}

} // namespace
} // namespace norvane
