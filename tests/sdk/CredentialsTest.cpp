#include "tests/support/ChildProcess.h"
#include "tests/support/FakeCredentialStore.h"
#include "tests/support/KitFixture.h"

#include <norvane/sdk/NVMCredentials.h>

#include <set>

namespace norvane {
namespace {

const std::string kPrefix = "NVMKeychainServiceName";

/// An item, what an error says of it, and whether it goes when the credentials are cleared.
struct Item {
    const char* name;
    const char* detail;
    bool isCleared = true;
};
constexpr bool kStays = false;
constexpr Item kItems[] = {
    {"AuthenticationMethod", "2"},
    {"IntegratorKey", "-redacted-"},
    {"AccountId", "account-1"},
    {"AccountName", "Smith & Co", kStays},
    {"AccountSettings", "-account-settings-keys-count:2-", kStays},
    {"ConsumerDisclosure", "-consumerDisclosure-length:9-", kStays},
    {"ConsumerDisclosureId", "disclosure-1", kStays},
    {"Host", "https://service.example/restapi"},
    {"UserName", "Ann Smith"},
    {"UserSettings", "-user-settings-keys-count:1-", kStays},
    {"Email", "ann@example.com"},
    {"AccessToken", "-redacted-"},
    {"ApiPassword", "-redacted-"},
};

/// Refuses to save the items of some services.
class RefusingCredentialStore final : public CredentialStore {
  public:
    std::set<std::string, std::less<>> refusedServices;
    void breakWith(std::optional<NVMError> error) { items_.breakWith(std::move(error)); }

    Failure save(std::string_view service, std::string_view account, const Data& secret) override {
        if (refusedServices.contains(service)) return NVMError::make("test", 1, "refused");
        return items_.save(service, account, secret);
    }
    Result<std::optional<Data>> fetch(std::string_view service, std::string_view account) override {
        return items_.fetch(service, account);
    }
    Failure remove(std::string_view service, std::string_view account) override {
        return items_.remove(service, account);
    }

  private:
    FakeCredentialStore items_;
};

class CredentialsTest : public KitFixture {
  protected:
    void adjust(Platform& given, PlatformOptions&) override { given.credentials = store_; }

    static std::shared_ptr<NVMAccount> account(const std::string& userId = "user-1") {
        auto made = NVMAccount::withAccessToken("token", userId, "Ann Smith", "ann@example.com", "account-1",
                                                Url::parse("https://service.example/restapi"), "key");
        made->accountName = "Smith & Co";
        made->accountSettings = Dictionary{{"inSessionEnabled", "true"}, {"allowOfflineSigning", "true"}};
        made->userSettings = Dictionary{{"locale", "en"}};
        made->consumerDisclosure = "We agree.";
        made->consumerDisclosureId = "disclosure-1";
        return made;
    }
    static std::shared_ptr<NVMAccount> byApiPassword() {
        auto made = account();
        made->authenticationMethod = NVMAuthenticationMethodApiPassword;
        made->apiPassword = "secret";
        return made;
    }
    bool has(const std::string& item, const std::string& user) {
        const auto found = store_->fetch(kPrefix + item, user);
        return found && found->has_value();
    }
    void expectCleared(const std::string& user) {
        for (const Item& item : kItems)
            EXPECT_EQ(has(item.name, user), !item.isCleared) << item.name;
    }

    std::shared_ptr<RefusingCredentialStore> store_ = std::make_shared<RefusingCredentialStore>();
};

TEST_F(CredentialsTest, ComeBackAsTheyWereStored) {
    EXPECT_EQ(NVMCredentials::primaryCredentials(), nullptr);
    ASSERT_EQ(NVMCredentials::persistCredentialsForAccount(*account()), std::nullopt);
    const auto read = NVMCredentials::primaryCredentials();
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->accessToken, "token");
    EXPECT_EQ(read->authenticationMethod, NVMAuthenticationMethodAccessToken);
    EXPECT_EQ(read->host, account()->host);
    EXPECT_EQ(read->membershipId(), "account-1+user-1");
    EXPECT_EQ(read->accountName, "Smith & Co");
    EXPECT_EQ(read->consumerDisclosure, "We agree.");
    EXPECT_EQ(read->consumerDisclosureId, "disclosure-1");
    EXPECT_EQ(read->userSettings, account()->userSettings);
    EXPECT_TRUE(read->canOfflineSend());
}

TEST_F(CredentialsTest, OfAnotherUserLoseWhatSignsInAndKeepTheProfile) {
    ASSERT_EQ(NVMCredentials::persistCredentialsForAccount(*account("user-1")), std::nullopt);
    ASSERT_EQ(NVMCredentials::persistCredentialsForAccount(*account("user-2")), std::nullopt);
    expectCleared("user-1");
    EXPECT_EQ(NVMCredentials::primaryCredentials()->userId, "user-2");
}

TEST_F(CredentialsTest, SurviveWhatFailsWhileTheirStoreIsOutOfReach) {
    ASSERT_EQ(NVMCredentials::persistCredentialsForAccount(*account("user-1")), std::nullopt);
    store_->breakWith(NVMError::make("test", 2, "no bus"));
    EXPECT_TRUE(NVMCredentials::persistCredentialsForAccount(*account("user-2")));
    EXPECT_TRUE(NVMCredentials::clearCredentials());
    EXPECT_EQ(NVMCredentials::primaryCredentials(), nullptr);
    store_->breakWith(std::nullopt);
    ASSERT_NE(NVMCredentials::primaryCredentials(), nullptr);
    EXPECT_EQ(NVMCredentials::primaryCredentials()->userId, "user-1");
}

TEST_F(CredentialsTest, KeepTheAccountsProfileWhenCleared) {
    ASSERT_EQ(NVMCredentials::persistCredentialsForAccount(*account()), std::nullopt);
    EXPECT_EQ(NVMCredentials::clearCredentials(), std::nullopt);
    EXPECT_EQ(NVMCredentials::primaryCredentials(), nullptr);
    expectCleared("user-1");
    EXPECT_EQ(NVMCredentials::userId(), "user-1");
}

TEST_F(CredentialsTest, AreClearedWhenAnyOneItemCannotBeSaved) {
    for (const Item& item : kItems) {
        store_->refusedServices = {kPrefix + item.name};
        const bool byPassword = std::string_view(item.name) == "ApiPassword";
        const Failure failure =
            NVMCredentials::persistCredentialsForAccount(byPassword ? *byApiPassword() : *account());
        ASSERT_TRUE(failure) << item.name;
        EXPECT_EQ(failure->domain, "user.persist.error");
        EXPECT_EQ(failure->localizedDescription(), std::string("Account information could not be persisted "
                                                               "for keys: ") +
                                                       item.name + ":" + item.detail);
        EXPECT_EQ(NVMCredentials::primaryCredentials(), nullptr) << item.name;
        EXPECT_FALSE(has("AccessToken", "user-1")) << item.name;
        EXPECT_FALSE(has("ApiPassword", "user-1")) << item.name;
    }
    store_->refusedServices = {kPrefix + "Email", kPrefix + "IntegratorKey"};
    EXPECT_TRUE(NVMCredentials::persistCredentialsForAccount(*account())
                    ->localizedDescription()
                    .ends_with("keys: IntegratorKey:-redacted-, Email:ann@example.com"))
        << "in the order of saving, which goes on after a failure";
}

TEST_F(CredentialsTest, WithoutAMethodAreRefused) {
    auto made = account();
    made->authenticationMethod = NVMAuthenticationMethodNone;
    EXPECT_TRUE(NVMCredentials::persistCredentialsForAccount(*made));
    EXPECT_EQ(NVMCredentials::primaryCredentials(), nullptr);
}

TEST_F(CredentialsTest, WithABrokenItemAreNone) {
    ASSERT_EQ(NVMCredentials::persistCredentialsForAccount(*account()), std::nullopt);
    const auto put = [&](const CredentialQuery& query, const char* text) {
        ASSERT_EQ(store_->save(query.service, query.account, Data(std::string(text))), std::nullopt);
    };
    put(NVMCredentials::accountSettingsQueryWithAccount("user-1"), "{\"version\":9,\"settings\":{}}");
    ASSERT_NE(NVMCredentials::primaryCredentials(), nullptr);
    EXPECT_EQ(NVMCredentials::primaryCredentials()->accountSettings, std::nullopt)
        << "an archive of another kit";
    put(NVMCredentials::authenticationMethodQueryWithAccount("user-1"), "2x");
    EXPECT_EQ(NVMCredentials::primaryCredentials(), nullptr);
}

/// Stores an account all of whose texts are one letter, and reads it back, time and again. Exits with 1 when
/// it reads one that is neither its own nor the other process's.
int storeAccounts(const std::vector<std::string>& arguments) {
    PlatformOptions options;
    options.home = arguments.at(0);
    options.credentialStore = CredentialStoreKind::File;
    auto platform = Platform::complete({}, options);
    if (!platform) return 10;
    Platform::install(std::move(*platform));
    const std::string& own = arguments.at(1);
    const auto stored = NVMAccount::withAccessToken(own, "user-1", own, own, own,
                                                    Url::parse("https://" + own + ".example"), own);
    for (int round = 0; round < 12; ++round) {
        if (NVMCredentials::clearCredentials()) return 11;
        if (NVMCredentials::persistCredentialsForAccount(*stored)) return 12;
        const auto read = NVMCredentials::primaryCredentials();
        if (!read) continue; // the other has just cleared
        for (const auto* text : {&read->userName, &read->email, &read->accountId, &read->integratorKey})
            if (*text != read->accessToken) return 1;
    }
    return 0;
}
const TestRole kStorer("store-accounts", storeAccounts);

TEST(CredentialsOfTwoProcesses, AreNeverMixed) {
    const TemporaryFolder home;
    auto first = ChildProcess::inRole("store-accounts", {home.path(), "a"});
    auto second = ChildProcess::inRole("store-accounts", {home.path(), "b"});
    EXPECT_EQ(first.wait(), 0);
    EXPECT_EQ(second.wait(), 0);
}

TEST(Account, MatchesNamesIgnoringCaseAndAccents) {
    NVMAccount account;
    account.userName = "Jose";
    account.email = "Jose@Example.com";
    EXPECT_TRUE(account.caseInsensitivelyMatchesName("JOSÉ", "jose@example.com"));
    EXPECT_FALSE(account.caseInsensitivelyMatchesName("JOSÉ", "other@example.com"));
    EXPECT_FALSE(account.caseInsensitivelyMatchesName(std::nullopt, "jose@example.com"));
    account.accountId = "a";
    EXPECT_EQ(account.membershipId(), std::nullopt);
}

} // namespace
} // namespace norvane
