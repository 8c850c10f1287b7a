#include "tests/sandbox/SandboxFixture.h"

namespace norvane::sandbox {

namespace {

class SignIn : public SandboxFixture {
  protected:
    Reply signIn(const std::string& name, const std::string& password, const std::string& query = "") {
        return client.sendWith(
            {{"X-Norvane-Authentication", Client::authentication(name, password, user().integratorKey)}},
            "GET", "/v2/login_information" + query);
    }
    Reply templatesWith(const Client::Headers& headers) {
        return client.sendWith(headers, "GET", "templates");
    }
    std::string keyOnly() const { return R"({"IntegratorKey":")" + user().integratorKey + "\"}"; }
};

} // namespace

TEST_F(SignIn, TellsTheAccountAndOnRequestTheApiPassword) {
    const Reply plain = signIn(user().userName, user().password);
    ASSERT_EQ(plain.status, 200);
    EXPECT_EQ(plain.json().text("apiPassword"), "");
    const Reply full = signIn(user().email, user().password,
                              "?api_password=true&include_account_id_guid=true&login_settings=all");
    const Json account = full.json().array("loginAccounts").at(0);
    EXPECT_EQ(full.json().text("apiPassword"), user().apiPassword);
    EXPECT_EQ(account.text("accountId"), user().accountId);
    EXPECT_EQ(account.text("accountIdGuid"), user().accountIdGuid);
    EXPECT_EQ(account.text("userId"), user().userId);
    EXPECT_FALSE(account.array("loginAccountSettings").empty());
}

TEST_F(SignIn, RefusesWrongNamesPasswordsAndKeys) {
    EXPECT_EQ(signIn(user().userName, "wrong").status, 401);
    EXPECT_EQ(signIn(user().userName, "").errorCode(), "USER_AUTHENTICATION_FAILED");
    EXPECT_EQ(signIn("somebody", user().password).status, 401);
    const std::string header = Client::authentication(user().userName, user().password, "other");
    const Reply reply =
        client.sendWith({{"X-Norvane-Authentication", header}}, "GET", "/v2/login_information");
    EXPECT_EQ(reply.status, 401);
    EXPECT_EQ(reply.errorCode(), "INTEGRATOR_KEY_UNKNOWN");
    EXPECT_FALSE(reply.json().text("message").empty());
}

TEST_F(SignIn, EveryOtherCallNeedsTheApiPasswordOrTheToken) {
    const auto& key = user().integratorKey;
    const auto withPassword = [&](const std::string& name, const std::string& password) {
        return templatesWith({{"X-Norvane-Authentication", Client::authentication(name, password, key)}})
            .status;
    };
    EXPECT_EQ(withPassword(user().userId, user().apiPassword), 200);
    EXPECT_EQ(withPassword(user().userName, user().password), 401) << "the password is for signing in only";
    EXPECT_EQ(withPassword(user().userName, user().apiPassword), 401)
        << "the user id is needed, not the name";
    const std::pair<std::string, std::string> token{"Authorization", "Bearer " + user().accessToken};
    EXPECT_EQ(templatesWith({token, {"X-Norvane-Authentication", keyOnly()}}).status, 200);
    EXPECT_EQ(templatesWith({token}).status, 401) << "the token alone is not enough";
    EXPECT_EQ(templatesWith({{"Authorization", "Bearer x"}, {"X-Norvane-Authentication", keyOnly()}}).status,
              401);
    EXPECT_EQ(templatesWith({{"X-Norvane-Authentication", keyOnly()}}).status, 401);
    EXPECT_EQ(templatesWith({}).errorCode(), "AUTHENTICATION_MISSING");
}

TEST_F(SignIn, MalformedProofIsABadRequest) {
    for (const char* header : {"not json", R"(["Username"])", R"({"Username":1})", R"({"User":"x"})",
                               R"({"Username":"a","Username":"b"})"})
        EXPECT_EQ(templatesWith({{"X-Norvane-Authentication", header}}).status, 400) << header;
}

TEST_F(SignIn, AccountCarriesWhatOfflineSigningNeeds) {
    const auto valueOf = [](const Json& settings, const std::string& list, const std::string& name) {
        for (const Json& setting : settings.array(list))
            if (setting.text("name") == name) return setting.text("value");
        return std::string();
    };
    const Json settings = client.get("settings").json();
    EXPECT_EQ(valueOf(settings, "accountSettings", "inSessionEnabled"), "true");
    EXPECT_EQ(valueOf(settings, "accountSettings", "allowOfflineSigning"), "true");
    const Json users = client.get("users/" + user().userId + "/settings").json();
    EXPECT_EQ(valueOf(users, "userSettings", "selfSignedRecipientEmailDocument"), "include_link");
    EXPECT_EQ(client.get("/v2/accounts/" + user().accountIdGuid).json().text("accountName"),
              user().accountName);
    EXPECT_FALSE(client.get("consumer_disclosure").json().text("esignAgreement").empty());
    EXPECT_FALSE(client.get("folders").json().array("folders").empty());
}

TEST_F(SignIn, UnknownPathsMethodsAndAccountsAreTold) {
    EXPECT_EQ(client.get("/v2/accounts/1/templates").errorCode(), "ACCOUNT_NOT_FOUND");
    EXPECT_EQ(client.get("users/1/settings").status, 404);
    EXPECT_EQ(client.get("nothing").status, 404);
    EXPECT_EQ(client.get("/v2/accounts/%zz/templates").status, 404);
    EXPECT_EQ(client.send("PATCH", "templates").status, 405);
    EXPECT_EQ(client.get("templates?count=0").status, 400);
}

} // namespace norvane::sandbox
