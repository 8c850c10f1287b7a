#include "tests/support/FakeCredentialStore.h"
#include "tests/support/KitFixture.h"

#include <norvane/sdk/NVMCredentials.h>

namespace norvane {
namespace {

/// Refuses to save the items of one service.
class RefusingCredentialStore final : public CredentialStore {
  public:
    std::string refusedService;

    Failure save(std::string_view service, std::string_view account, const Data& secret) override {
        if (service == refusedService) return NVMError::make("test", 1, "refused");
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
        made->consumerDisclosure = "We agree.";
        return made;
    }
    bool has(const CredentialQuery& query) {
        const auto item = store_->fetch(query.service, query.account);
        return item && item->has_value();
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
    EXPECT_EQ(read->userSettings, std::nullopt);
    EXPECT_TRUE(read->canOfflineSend());
}

TEST_F(CredentialsTest, OfAnotherUserAreWipedFirst) {
    ASSERT_EQ(NVMCredentials::persistCredentialsForAccount(*account("user-1")), std::nullopt);
    ASSERT_EQ(NVMCredentials::persistCredentialsForAccount(*account("user-2")), std::nullopt);
    EXPECT_FALSE(has(NVMCredentials::accessTokenQueryWithAccount("user-1")));
    EXPECT_FALSE(has(NVMCredentials::emailQueryWithAccount("user-1")));
    EXPECT_EQ(NVMCredentials::primaryCredentials()->userId, "user-2");
}

TEST_F(CredentialsTest, KeepTheAccountsProfileWhenCleared) {
    ASSERT_EQ(NVMCredentials::persistCredentialsForAccount(*account()), std::nullopt);
    NVMCredentials::clearCredentials();
    EXPECT_EQ(NVMCredentials::primaryCredentials(), nullptr);
    EXPECT_FALSE(has(NVMCredentials::accessTokenQueryWithAccount("user-1")));
    EXPECT_FALSE(has(NVMCredentials::hostQueryWithAccount("user-1")));
    EXPECT_TRUE(has(NVMCredentials::accountNameQueryWithAccount("user-1")));
    EXPECT_TRUE(has(NVMCredentials::accountSettingsQueryWithAccount("user-1")));
    EXPECT_TRUE(has(NVMCredentials::consumerDisclosureQueryWithAccount("user-1")));
    EXPECT_EQ(NVMCredentials::userId(), "user-1");
}

TEST_F(CredentialsTest, AreClearedWhenOneItemCannotBeSaved) {
    store_->refusedService = "NVMKeychainServiceNameAccountName";
    const Failure named = NVMCredentials::persistCredentialsForAccount(*account());
    ASSERT_TRUE(named);
    EXPECT_EQ(named->localizedDescription(),
              "Account information could not be persisted for keys: AccountName:Smith & Co");
    EXPECT_EQ(NVMCredentials::primaryCredentials(), nullptr);

    store_->refusedService = "NVMKeychainServiceNameAccessToken";
    const Failure secret = NVMCredentials::persistCredentialsForAccount(*account());
    ASSERT_TRUE(secret);
    EXPECT_EQ(secret->localizedDescription(),
              "Account information could not be persisted for keys: AccessToken:-redacted-");

    store_->refusedService = "NVMKeychainServiceNameAccountSettings";
    const Failure counted = NVMCredentials::persistCredentialsForAccount(*account());
    ASSERT_TRUE(counted);
    EXPECT_TRUE(counted->localizedDescription().ends_with("AccountSettings:-account-settings-keys-count:2-"));
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
