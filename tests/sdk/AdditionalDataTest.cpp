#include "tests/support/Event.h"
#include "tests/support/FakeCredentialStore.h"
#include "tests/support/FakeHttpSession.h"
#include "tests/support/KitFixture.h"

#include <norvane/sdk/NVMCredentials.h>
#include <norvane/sdk/NVMManager.h>

#include <atomic>
#include <map>
#include <thread>

namespace norvane {
namespace {

constexpr const char* kName = "/v2/accounts/account-1";
constexpr const char* kSettings = "/v2/accounts/account-1/settings";
constexpr const char* kUser = "/v2/accounts/account-1/users/user-1/settings";
constexpr const char* kDisclosure = "/v2/accounts/account-1/consumer_disclosure";

HttpResponse json(int status, std::string body) {
    return {status, {{"Content-Type", "application/json"}}, Data(std::move(body))};
}

/// What a service answers at these paths, if nothing else is said.
HttpResponse usualAnswer(const std::string& path) {
    if (path == kName) return json(200, R"({"accountName":"Smith & Co"})");
    if (path == kUser) return json(200, R"({"userSettings":[{"name":"locale","value":"en"}]})");
    if (path == kDisclosure) return json(200, R"({"accountEsignId":"7","esignAgreement":"We agree."})");
    return json(200, R"({"accountSettings":[{"name":"inSessionEnabled","value":"true"},)"
                     R"({"name":"allowOfflineSigning","value":"true"}]})");
}

/// Answers each request on a thread of its own, all at once.
class CrowdedHttpSession final : public HttpSession {
  public:
    ~CrowdedHttpSession() override {
        for (auto& thread : threads_)
            thread.join();
    }
    void send(HttpRequest request, Completion completion) override {
        const std::lock_guard lock(mutex_);
        threads_.emplace_back([path = request.url.path(), completion = std::move(completion)] {
            completion(usualAnswer(path));
        });
    }
    void download(HttpRequest request, Completion completion) override {
        send(std::move(request), std::move(completion));
    }
    void clearCache() override {}
    void setCacheCapacity(std::uint64_t, std::uint64_t) override {}

  private:
    std::mutex mutex_; ///< guards `threads_`
    std::vector<std::thread> threads_;
};

class AdditionalDataTest : public KitFixture {
  protected:
    void adjust(Platform& given, PlatformOptions&) override {
        given.credentials = store_;
        http_ = std::make_shared<FakeHttpSession>(home_.path());
        given.http = http_;
    }
    void TearDown() override { NVMManager::clearCredentialsAndCachedTemplates(); }

    static std::shared_ptr<NVMAccount> account() {
        return NVMAccount::withAccessToken("token", "user-1", "Ann Smith", "ann@example.com", "account-1",
                                           Url::parse("https://service.example"), "key");
    }
    /// Answers in the order of asking: name, settings, user settings, then the disclosure. `statuses` has
    /// those that are refused.
    void refuse(std::map<std::string, int> statuses) {
        http_->answerWith([statuses](const FakeHttpSession::Sent& sent) -> Result<HttpResponse> {
            const auto found = statuses.find(sent.request.url.path());
            if (found == statuses.end()) return usualAnswer(sent.request.url.path());
            return json(found->second, R"({"errorCode":"NO","message":"No."})");
        });
    }
    /// The codes that the completion was given, one for each call of it; 0 for no error.
    std::vector<std::int64_t> sync(const std::shared_ptr<NVMAccount>& synced) {
        const auto codes = std::make_shared<std::vector<std::int64_t>>();
        const auto ended = std::make_shared<Event>();
        http_->hold(); // until all three have been asked: that makes the order
        synced->syncAdditionalDataWithCompletion([=](const Failure& error) {
            codes->push_back(error ? error->code : 0);
            ended->set();
        });
        http_->release();
        EXPECT_TRUE(ended->wait());
        // One more answer: completions come one after another, so a second call would have come by then.
        const auto after = std::make_shared<Event>();
        synced->syncAccountNameWithCompletion([=](const Failure&) { after->set(); });
        EXPECT_TRUE(after->wait());
        return *codes;
    }
    bool wasAsked(const std::string& path) const {
        for (const auto& sent : http_->sent())
            if (sent.request.url.path() == path) return true;
        return false;
    }

    std::shared_ptr<FakeCredentialStore> store_ = std::make_shared<FakeCredentialStore>();
    std::shared_ptr<FakeHttpSession> http_;
};

using Codes = std::vector<std::int64_t>;

TEST_F(AdditionalDataTest, ReportsTheErrorOfWhicheverFetchEndsLast) {
    ASSERT_EQ(NVMCredentials::persistCredentialsForAccount(*account()), std::nullopt);
    const auto synced = account();
    refuse({{kName, 401}, {kUser, 403}});
    EXPECT_EQ(sync(synced), Codes{0}) << "the disclosure came last, and came";
    EXPECT_EQ(synced->accountName, std::nullopt);
    EXPECT_EQ(synced->consumerDisclosureId, "7");
    refuse({{kName, 401}, {kDisclosure, 404}});
    EXPECT_EQ(sync(account()), Codes{404});
    EXPECT_TRUE(wasAsked(kDisclosure));
}

TEST_F(AdditionalDataTest, HasNoDisclosureWithoutSettingsThatAllowOfflineSending) {
    ASSERT_EQ(NVMCredentials::persistCredentialsForAccount(*account()), std::nullopt);
    refuse({{kSettings, 500}});
    EXPECT_EQ(sync(account()), Codes{0}) << "the user settings came last";
    refuse({{kSettings, 500}, {kUser, 403}});
    EXPECT_EQ(sync(account()), Codes{403});
    http_->answerWith([](const FakeHttpSession::Sent& sent) -> Result<HttpResponse> {
        if (sent.request.url.path() != kSettings) return usualAnswer(sent.request.url.path());
        return json(200, R"({"accountSettings":[{"name":"inSessionEnabled","value":"true"}]})");
    });
    EXPECT_EQ(sync(account()), Codes{0});
    EXPECT_FALSE(wasAsked(kDisclosure));
}

TEST_F(AdditionalDataTest, EndsOnceWhenAllAnswersComeAtTheSameTime) {
    ASSERT_EQ(NVMCredentials::persistCredentialsForAccount(*account()), std::nullopt);
    std::atomic<int> ends = 0;
    {
        Platform crowded = Platform::current();
        crowded.http = std::make_shared<CrowdedHttpSession>();
        http_.reset();
        Platform::install(std::move(crowded));
    }
    Event ended;
    constexpr int kRounds = 40;
    for (int round = 0; round < kRounds; ++round) {
        account()->syncAdditionalDataWithCompletion([&](const Failure& error) {
            EXPECT_EQ(error, std::nullopt);
            ++ends;
            ended.set();
        });
    }
    EXPECT_TRUE(ended.wait(kRounds));
    restart(); // ends the session and with it all its threads
    EXPECT_EQ(ends, kRounds);
}

TEST_F(AdditionalDataTest, ThatCannotBeStoredSignsOut) {
    http_->answerWith([this](const FakeHttpSession::Sent& sent) -> Result<HttpResponse> {
        if (sent.request.url.path() == kDisclosure) store_->breakWith(NVMError::make("test", 1, "locked"));
        return usualAnswer(sent.request.url.path());
    });
    Event ended;
    Failure told;
    http_->hold();
    NVMManager::completeLoginForAccount(account(), NVMNetworkModeOnline,
                                        [&](const std::optional<NVMAccountInfo>&, Failure error) {
                                            told = std::move(error);
                                            ended.set();
                                        });
    http_->release();
    ASSERT_TRUE(ended.wait());
    ASSERT_TRUE(told);
    EXPECT_EQ(told->domain, "user.additional.data.fetch.error");
    EXPECT_NE(told->localizedDescription().find("could not be persisted for keys"), std::string::npos);
    EXPECT_FALSE(NVMManager::NVM_isSetupAndLoginSuccessful());
    log_->expect("sign-out");
}

TEST_F(AdditionalDataTest, IsNotAskedForByAPasswordSignInWithoutAnAccount) {
    std::vector<std::pair<bool, std::string>> told; // whether there was an info, and the error's reason
    Event ended;
    const auto signIn = [&](const char* body, int answers) {
        told.clear();
        http_->enqueue(json(200, body));
        NVMManager::loginWithUserId("ann", "secret", "key", Url::parse("https://service.example"),
                                    [&](const std::optional<NVMAccountInfo>& info, const Failure& error) {
                                        told.emplace_back(info.has_value(),
                                                          error ? error->failureReason() : "");
                                        ended.set();
                                    });
        return ended.wait(answers);
    };
    EXPECT_TRUE(signIn("null", 2));
    const std::string reason = "USER_LOGIN_INFORMATION_ERROR";
    EXPECT_EQ(told, (decltype(told){{false, reason}, {true, reason}})) << "no error, and no answer either";
    EXPECT_TRUE(signIn(R"({"apiPassword":"x","loginAccounts":[]})", 3));
    EXPECT_EQ(told, (decltype(told){{true, reason}}));
    EXPECT_EQ(http_->sent().size(), 2u);
    EXPECT_EQ(store_->itemCount(), 0u);
}

} // namespace
} // namespace norvane
