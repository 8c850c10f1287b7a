#include "tests/apps/CommandLine.h"

#include <norvane/platform/Json.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace norvane {

namespace {

class CommandLineTest : public CommandLine {
  protected:
    /// Signs with a changed script and expects an error that names `culprit`; nothing may be kept.
    void expectRefused(const std::function<void(Dictionary&)>& edit, const std::string& reason,
                       const std::string& culprit) {
        const std::string script = leaseScript(edit).string();
        const Run refused = run({"--json", "sign", leaseId(), "--script", script});
        EXPECT_EQ(refused.status, 1);
        EXPECT_EQ(refused.json()["error"]["reason"], Value(reason)) << refused.output;
        EXPECT_NE(refused.errors.find(culprit), std::string::npos) << refused.errors;
        EXPECT_EQ(envelopesOnDevice(home_), 0u);
        const auto documents = home_ / "Documents" / "userId" / "ed";
        EXPECT_TRUE(!std::filesystem::exists(documents) || std::filesystem::is_empty(documents));
    }

    static void editSigner(Dictionary& script, std::size_t index,
                           const std::function<void(Dictionary&)>& edit) {
        Array signers = *script["signers"].asArray();
        Dictionary signer = *signers[index].asDictionary();
        edit(signer);
        signers[index] = std::move(signer);
        script["signers"] = std::move(signers);
    }
};

TEST_F(CommandLineTest, TheMainJobEndsWithOneEnvelopeOnTheServiceAndNoneOnTheDevice) {
    signIn();
    cacheLease();
    const auto preview = folder_.path() / "preview.pdf";
    auto arguments = signArguments();
    arguments.insert(arguments.end(), {"--preview", preview.string()});
    const Run signedRun = run(arguments);
    ASSERT_EQ(signedRun.status, 0) << signedRun.errors;
    const Value transactionId = signedRun.json()["transactionId"];
    EXPECT_EQ(std::filesystem::file_size(preview) > 20'000, true);

    const Run listed = run({"--json", "envelopes", "list"});
    ASSERT_EQ(listed.json().asArray()->size(), 1u);
    EXPECT_EQ(listed.json().asArray()->front()["transactionId"], transactionId);
    EXPECT_EQ(listed.json().asArray()->front()["status"], Value("completed"));
    EXPECT_EQ(listed.json().asArray()->front()["syncPending"], Value(true));
    EXPECT_EQ(run({"logout"}).status, 1) << "an envelope waits for upload";

    const Run synced = run({"--json", "sync"});
    ASSERT_EQ(synced.status, 0) << synced.output << synced.errors;
    EXPECT_EQ(synced.json()["succeeded"], Value(Array{transactionId}));
    EXPECT_EQ(envelopesOnDevice(home_), 0u);
    const auto received = service_.receivedEnvelopes();
    ASSERT_EQ(received.size(), 1u);
    EXPECT_EQ(Value(received[0].transactionId), transactionId);
    EXPECT_EQ(received[0].warnings, std::vector<std::string>());
    EXPECT_EQ(received[0].images.size(), 4u) << "two signatures, two sets of initials";
}

TEST_F(CommandLineTest, ShowsTheAccountItsFoldersAndWhatLiesInThem) {
    EXPECT_EQ(run({"account", "show"}).status, 1) << "nobody is signed in";
    signIn();
    const Run folders = run({"--json", "folders"});
    ASSERT_EQ(folders.status, 0) << folders.errors;
    std::size_t found = 0;
    const Value all = folders.json();
    for (const Value& folder : *all.asArray()) {
        const Value listed =
            run({"--json", "templates", "list", "--folder", *folder["folderId"].asString()}).json();
        for (const Value& entry : *listed.asArray())
            EXPECT_EQ(entry["folderName"], folder["name"]);
        found += listed.asArray()->size();
    }
    EXPECT_EQ(found, 4u) << "every template lies in one folder";
    EXPECT_EQ(run({"templates", "list", "--folder", "x", "--search", "y"}).status, 2);

    EXPECT_EQ(run({"account", "show", "--refresh"}).status, 0);
    const Value account = run({"--json", "account", "show"}).json();
    EXPECT_EQ(account["accountName"], Value(service_.credentials().accountName));
    EXPECT_EQ(account["accountSettings"]["allowOfflineSigning"], Value("true"));
    EXPECT_EQ(account["userSettings"]["selfSignedRecipientEmailDocument"], Value("include_link"));
    EXPECT_TRUE(account["consumerDisclosureId"].isString());
    EXPECT_EQ(run({"account", "show"}).output.find(service_.credentials().apiPassword), std::string::npos);
}

TEST_F(CommandLineTest, CallsAnyOperationAndNamesTheKeysOfRecords) {
    EXPECT_EQ(run({"api", "listTemplates"}).status, 1) << "nobody is signed in";
    signIn();
    const Run listed = run({"api", "listTemplates", "count=2"});
    ASSERT_EQ(listed.status, 0) << listed.errors;
    const Value templates = listed.json()["envelopeTemplates"];
    ASSERT_EQ(templates.asArray()->size(), 2u);
    const std::string id = *templates.asArray()->front()["templateId"].asString();
    const std::string file = folder_.path() / "combined.pdf";
    const std::vector<std::string> download = {"api",      "getDocument", "templateId=" + id,
                                               "--output", file,          "documentId=combined"};
    EXPECT_EQ(run(download).status, 0);
    std::string start(5, ' ');
    std::ifstream(file).read(start.data(), 5);
    EXPECT_EQ(start, "%PDF-");
    for (const std::vector<std::string>& wrong : {std::vector<std::string>{"api", "nonsense"},
                                                  {"api", "getDocument", "templateId=" + id},
                                                  {"api", "listTemplates", "colour=red"}})
        EXPECT_EQ(run(wrong).status, 2);
    EXPECT_EQ(run({"api", "getTemplateWithId", "templateId=none"}).status, 1) << "the service knows no such";
    EXPECT_EQ(writeJson(run({"records", "NVESListItem"}).json()),
              R"({"NVESListItem":[{"key":"text","kind":"string"},{"key":"value","kind":"string"},)"
              R"({"key":"selected","kind":"string"}]})");
}

TEST_F(CommandLineTest, AnEnvelopeWhoseUploadIsCutOffStaysAndGoesWithTheNextSync) {
    signIn();
    cacheLease();
    ASSERT_EQ(run(signArguments()).status, 0);
    service_.addFault("POST /v2/accounts/*/envelopes cut-request=20000");
    const Run failed = run({"--json", "sync"});
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.json()["pending"], Value(1)) << failed.output;
    const Value kept = run({"--json", "envelopes", "list"}).json().asArray()->front();
    EXPECT_EQ(kept["syncPendingUploadRetryCount"], Value(1));
    EXPECT_TRUE(kept["syncFailureReason"].isString());
    EXPECT_EQ(run({"sync"}).status, 0);
    EXPECT_EQ(service_.receivedEnvelopes().size(), 1u);
}

TEST_F(CommandLineTest, AnUploadThatWasAppliedButNeverAnsweredIsNotSentTwice) {
    signIn();
    cacheLease();
    ASSERT_EQ(run(signArguments()).status, 0);
    service_.addFault("POST /v2/accounts/*/envelopes apply-close");
    EXPECT_EQ(run({"sync"}).status, 1);
    EXPECT_EQ(service_.receivedEnvelopes().size(), 1u);
    const Run settled = run({"--json", "sync"});
    EXPECT_EQ(settled.status, 0) << settled.errors;
    EXPECT_EQ(settled.json()["succeeded"].asArray()->size(), 1u);
    EXPECT_EQ(service_.receivedEnvelopes().size(), 1u);
    EXPECT_EQ(envelopesOnDevice(home_), 0u);
}

TEST_F(CommandLineTest, AScriptThatDoesNotFitIsRefusedByNameAndKeepsNothing) {
    signIn();
    cacheLease();
    expectRefused(
        [](Dictionary& script) {
            editSigner(script, 0, [](Dictionary& signer) {
                Dictionary tabs = *signer["tabs"].asDictionary();
                tabs["Favourite Colour"] = "blue";
                signer["tabs"] = std::move(tabs);
            });
        },
        "TAB_UNKNOWN", "Favourite Colour");
    expectRefused(
        [](Dictionary& script) {
            editSigner(script, 0, [](Dictionary& signer) { signer["tabs"] = Dictionary{}; });
        },
        "REQUIRED_TAB_BLANK", "Tenant Phone");
    expectRefused(
        [](Dictionary& script) {
            editSigner(script, 0, [](Dictionary& signer) { signer.erase("signature"); });
        },
        "REQUIRED_TAB_BLANK", "Tenant Signature");
    expectRefused(
        [](Dictionary& script) {
            Array signers = *script["signers"].asArray();
            std::reverse(signers.begin(), signers.end());
            script["signers"] = std::move(signers);
        },
        "SIGNER_OUT_OF_TURN", "Tomas Alder");
    expectRefused([](Dictionary& script) { script["signers"] = Array{script["signers"].asArray()->front()}; },
                  "SIGNER_MISSING", "Tomas Alder");
    expectRefused(
        [](Dictionary& script) {
            Array signers = *script["signers"].asArray();
            signers.push_back(Dictionary{{"recipient", "Nora Third"}});
            script["signers"] = std::move(signers);
        },
        "SIGNER_OUT_OF_TURN", "Nora Third");
    expectRefused(
        [](Dictionary& script) {
            editSigner(script, 1, [](Dictionary& signer) { signer["signature"] = "nowhere.json"; });
        },
        "SIGNATURE_FILE_INVALID", "nowhere.json");

    auto arguments = signArguments();
    arguments.insert(arguments.end(), {"--preview", (folder_.path() / "nowhere" / "preview.pdf").string()});
    EXPECT_EQ(run(arguments).json()["error"]["reason"], Value("PREVIEW_UNWRITABLE"));
    EXPECT_EQ(envelopesOnDevice(home_), 0u);

    const auto nowhere = folder_.file("tabs.json", R"({"signHereTabs":[{"tabLabel":"Far Away","tabId":"900",)"
                                                   R"("documentId":"1","pageNumber":"99"}]})");
    ASSERT_EQ(run({"api", "NVESTemplatesApi.createTabs", "templateId=" + leaseId(), "recipientId=1", "--body",
                   nowhere.string()})
                  .status,
              0);
    cacheLease();
    expectRefused({}, "TAB_NOT_EDITABLE", "Far Away");
}

TEST_F(CommandLineTest, AScriptChoosesRadioButtonsByTheNameOfTheirGroup) {
    signIn();
    ASSERT_EQ(run({"templates", "cache", sandbox::kRentalTemplateId}).status, 0);
    const auto sign = [this](const Value& choice) {
        const auto script = leaseScript([&](Dictionary& content) {
            Dictionary defaults = *content["defaults"].asDictionary();
            Dictionary renter = *defaults["recipientDefaults"].asArray()->front().asDictionary();
            renter["recipientRoleName"] = "Renter";
            content["defaults"] = Dictionary{{"recipientDefaults", Array{renter}}};
            Dictionary tabs{{"Renter Company", "Lindqvist & Co"}, {"Delivery Address", "Quay 3"}};
            if (!choice.isNull()) tabs["Hand-over"] = choice;
            editSigner(content, 0, [&](Dictionary& signer) { signer["tabs"] = tabs; });
            content["signers"] = Array{content["signers"].asArray()->front()};
        });
        return run({"--json", "sign", sandbox::kRentalTemplateId, "--script", script.string()});
    };
    const Run blank = sign({});
    EXPECT_EQ(blank.json()["error"]["reason"], Value("REQUIRED_TAB_BLANK"));
    EXPECT_NE(blank.errors.find("\"Hand-over\"."), std::string::npos) << blank.errors;
    EXPECT_NE(sign("Carrier pigeon").errors.find("\"Collect\""), std::string::npos) << "names the choices";
    EXPECT_EQ(sign(true).json()["error"]["reason"], Value("TAB_VALUE_INVALID"));
    ASSERT_EQ(sign("Deliver").status, 0);
    ASSERT_EQ(run({"sync"}).status, 0);
    EXPECT_EQ(service_.receivedEnvelopes().at(0).warnings, std::vector<std::string>());
}

TEST_F(CommandLineTest, WrongCredentialsAndWrongUsageAreToldApart) {
    const Run refused = run({"--json", "login", "--host", service_.url(), "--integrator-key", "not-the-key",
                             "--user", service_.credentials().userName});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.json()["error"]["domain"], Value("user.setup"));
    EXPECT_EQ(refused.json()["error"]["code"], Value(401));
    EXPECT_NE(refused.errors.find("error: "), std::string::npos);
    EXPECT_EQ(run({"whoami"}).status, 1) << "nobody is signed in";
    EXPECT_EQ(run({"sign"}).status, 2);
    EXPECT_EQ(run({"config", "set", "other.key", "x"}).status, 2);
    EXPECT_EQ(run({"--help"}).status, 0);
}

TEST_F(CommandLineTest, TheHomeIsReadableForItsOwnerAloneAndHoldsNoSecretInPlain) {
    signIn();
    for (const auto& entry : std::filesystem::recursive_directory_iterator(home_)) {
        const auto mode = std::filesystem::status(entry).permissions() & std::filesystem::perms::all;
        EXPECT_EQ(mode, entry.is_directory()
                            ? std::filesystem::perms::owner_all
                            : std::filesystem::perms::owner_read | std::filesystem::perms::owner_write)
            << entry.path();
    }
    const Run secret = run({"--json", "whoami"});
    EXPECT_EQ(secret.output.find(service_.credentials().apiPassword), std::string::npos);
}

} // namespace

} // namespace norvane
