#include "tests/apps/CommandLine.h"

#include <norvane/platform/Json.h>

namespace norvane {

namespace {

class QueryCommand : public CommandLine {
  protected:
    Run ask(const std::string& file, const std::vector<std::string>& query) const {
        std::vector<std::string> arguments = {"--json", "query",
                                              folder_.file("envelope.json", file).string()};
        arguments.insert(arguments.end(), query.begin(), query.end());
        return run(arguments);
    }
    std::string answer(const std::string& file, const std::vector<std::string>& query) const {
        const Run asked = ask(file, query);
        EXPECT_EQ(asked.status, 0) << asked.errors;
        return writeJson(asked.json());
    }
};

constexpr const char* kEnvelope = R"({
  "account": {"userId": "u", "userName": "Paula", "email": "paula@example.com"},
  "config": {"nvm.setup.tab.defaults.comparision": 2},
  "recipients": {
    "signers": [{"recipientId": "1", "roleName": "-", "name": "PAULA", "email": "Paula@example.com",
                 "routingOrder": 2}],
    "inPersonSigners": [{"recipientId": "2", "hostName": "Paula", "hostEmail": "paula@example.com",
      "tabs": {"textTabs": [{"tabLabel": "City Name", "required": true}],
               "fullNameTabs": [{"tabId": "n", "tabType": 0}]}}]}})";

TEST_F(QueryCommand, AnswersWithoutAHome) {
    EXPECT_EQ(answer(kEnvelope, {"allRecipients"}), R"(["2","1"])");
    EXPECT_EQ(answer(kEnvelope, {"allSigners"}), R"(["1","2"])");
    EXPECT_EQ(answer(kEnvelope, {"incompleteLocalSigners"}), R"(["2","1"])");
    EXPECT_EQ(answer(kEnvelope, {"recipientWithRoleName", "-"}), R"("1")");
    EXPECT_EQ(answer(kEnvelope, {"recipientWithRoleName", ""}), "null");
    EXPECT_EQ(answer(kEnvelope, {"tagsForSigner", "1"}), "null") << "no tabs";
    EXPECT_EQ(answer(kEnvelope, {"remainingRequiredTags", "2"}), "[null]") << "a tab without an id";
    EXPECT_EQ(answer(kEnvelope, {"unsupportedTabTypes", "2"}), R"(["FullName"])");
    EXPECT_EQ(answer(kEnvelope, {"assignLabelsAndIDs", "force"}),
              R"([["n","Unsupported tab 1"],["2","City Name"]])");
    EXPECT_FALSE(std::filesystem::exists(home_));
}

TEST_F(QueryCommand, AppliesDefaultsInTheOrderOfTheFileUntilTheFirstError) {
    const auto defaults = folder_.file("defaults.json", R"({
      "tabValueDefaults": {"Name": "first", "City": "last"},
      "recipientDefaults": [{"recipientId": "2", "recipientType": 7, "recipientName": "Ann"}]})");
    const Value done = ask(kEnvelope, {"applyDefaults", defaults.string()}).json();
    EXPECT_EQ(done["ok"], Value(true));
    EXPECT_EQ(done["notifications"], Value(Array{"NVMEnvelopeRecipientsDidChangeNotification"}));
    const Array& signers = *done["envelope"]["recipients"]["signers"].asArray();
    ASSERT_EQ(signers.size(), 2u);
    EXPECT_EQ(signers[1]["name"], Value("Ann"));
    EXPECT_EQ(signers[1]["tabs"]["textTabs"].asArray()->front()["value"], Value("last"));

    folder_.file("defaults.json", R"({"emailSubject": "S", "recipientDefaults": [{"recipientId": "9"}]})");
    const Value refused = ask(kEnvelope, {"applyDefaults", defaults.string()}).json();
    EXPECT_EQ(refused["error"], Value("INVALID_REECIPIENT_ID"));
    EXPECT_EQ(refused["envelope"]["emailSubject"], Value()) << "what comes after the error is not applied";
}

TEST_F(QueryCommand, NamesWhatIsWrong) {
    const auto expectError = [&](const std::string& file, const std::vector<std::string>& query,
                                 const std::string& culprit) {
        const Run refused = ask(file, query);
        EXPECT_EQ(refused.status, 1);
        EXPECT_NE(refused.errors.find(culprit), std::string::npos) << refused.errors;
    };
    expectError(R"({"recipients": {"signer": []}})", {"allRecipients"}, "recipients.signer");
    expectError(R"({"account": {"name": "x"}})", {"allRecipients"}, "account.name");
    expectError(R"({"config": {"nvm.setup.none": true}})", {"allRecipients"}, "nvm.setup.none");
    expectError(R"({"config": {"nvm.setup.tab.defaults.comparision": [1]}})", {"allRecipients"},
                "config.nvm.setup.tab.defaults.comparision");
    expectError(kEnvelope, {"tagsForSigner", "9"}, "\"9\"");
    expectError(kEnvelope, {"applyDefaults", "nowhere.json"}, "nowhere.json");
    EXPECT_EQ(ask(kEnvelope, {"allSinners"}).status, 2);
    EXPECT_EQ(ask(kEnvelope, {"tagsForSigner"}).status, 2);
    EXPECT_EQ(ask(kEnvelope, {"isSelfSign", "1"}).status, 2);
}

TEST_F(QueryCommand, ValidatesEnteredTexts) {
    const Run broken = run({"validate", "password", "a b<", "--json"});
    EXPECT_EQ(broken.status, 1);
    EXPECT_EQ(writeJson(broken.json()),
              R"x(["Must not contain space(s)","Must not contain <","Must contain at least 6 characters"])x");
    EXPECT_EQ(run({"--json", "validate", "email", " Ann@Example.com "}).output, "[]\n");
    EXPECT_EQ(run({"validate", "name", ""}).output, "Must contain at least one character\n");
    EXPECT_EQ(run({"validate", "subject", "-x"}).status, 0) << "a hyphen begins no option here";
    EXPECT_EQ(run({"validate", "subject", "--", "--json"}).status, 0);
    EXPECT_EQ(run({"validate", "name"}).status, 2);
    EXPECT_FALSE(std::filesystem::exists(home_));
}

TEST_F(QueryCommand, AScriptSaysWhoSignsAndWhatTabsAndFieldsHold) {
    signIn();
    cacheLease();
    ASSERT_EQ(run({"config", "set", "nvm.setup.tab.defaults.comparision", "2"}).status, 0);
    const auto& user = service_.credentials();
    const std::string person =
        R"("recipientName": ")" + user.userName + R"(", "recipientEmail": ")" + user.email + '"';
    leaseScript();
    const auto script = folder_.file("script.json", R"({"defaults": {
        "recipientDefaults": [
          {"recipientSelectorType": 0, "recipientId": "1", "recipientType": 7, )" +
                                                        person + R"(},
          {"recipientSelectorType": 1, "recipientRoleName": "Landlord", "removeRecipient": true}],
        "tabValueDefaults": {"Tenant Phone": "555", "Payment": "bank", "Tenant": "unknown"},
        "customFields": {"textCustomFields": [{"name": "Branch", "value": "North"}]}},
      "signers": [{"recipient": ")" + user.userName + R"(", "tabs": {"Emergency Contact": "none",
        "Number of Occupants": "1", "Parking Space": false},
        "signature": "mara-signature.json", "initials": "mara-initials.json"}]})");
    const Run signedRun = run({"sign", leaseId(), "--script", script.string()});
    ASSERT_EQ(signedRun.status, 0) << signedRun.errors;
    ASSERT_EQ(run({"sync"}).status, 0);
    const Value sent = *parseJson(service_.receivedEnvelopes().front().json);
    EXPECT_EQ(sent["recipients"]["inPersonSigners"], Value());
    const Value& signer = sent["recipients"]["signers"].asArray()->front();
    EXPECT_EQ(signer["name"], Value(user.userName));
    for (const Value& tab : *signer["tabs"]["textTabs"].asArray()) {
        if (tab["tabLabel"] == Value("Tenant Phone")) {
            EXPECT_EQ(tab["value"], Value("unknown")) << "the last key of the script wins";
        }
    }
    EXPECT_EQ(sent["customFields"]["textCustomFields"].asArray()->front()["value"], Value("North"));
}

} // namespace

} // namespace norvane
