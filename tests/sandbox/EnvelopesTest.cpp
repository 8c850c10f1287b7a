#include "sandbox/Template.h"
#include "tests/sandbox/SampleEnvelope.h"
#include "tests/sandbox/SandboxFixture.h"

namespace norvane::sandbox {

namespace {

class Envelopes : public SandboxFixture {
  protected:
    Reply create(const Json& definition) { return client.send("POST", "envelopes", definition.write()); }
};

} // namespace

TEST_F(Envelopes, AreMadeFromATemplateWithItsRolesFilled) {
    const std::string path = consentEnvelope();
    const Json recipients = client.get(path + "/recipients?include_tabs=true").json();
    const Json signer = recipients.array("signers").at(0);
    EXPECT_EQ(signer.text("name"), "Ada Finch");
    EXPECT_EQ(signer.text("email"), "ada@x.example");
    EXPECT_EQ(signer.find("tabs")->array("signHereTabs").size(), 1U);
    EXPECT_EQ(client.get(path + "/recipients").json().array("signers").at(0).find("tabs"), nullptr);
    EXPECT_EQ(client.get(path).json().text("status"), "sent");
    EXPECT_EQ(client.get(path + "/documents/1").body, offeredTemplate(kConsentTemplateId).documents[0].pdf);
}

TEST_F(Envelopes, PlainOnesCarryTheirDocuments) {
    Json document = Json::object({{"documentId", "1"}, {"name", "a.pdf"}});
    Json definition = Json::object({{"status", "created"}, {"documents", Json::Array{document}}});
    EXPECT_EQ(create(definition).status, 400) << "no bytes";
    definition.find("documents")->mutableItems()->front().set("documentBase64", "AAAA");
    EXPECT_EQ(create(definition).status, 400) << "no PDF";
    EXPECT_EQ(create(Json::object({{"status", "sent"}, {"templateId", newUuid()}})).errorCode(),
              "TEMPLATE_ID_INVALID");
    EXPECT_EQ(create(Json::object({{"status", "sent"}})).status, 400);
    EXPECT_EQ(client.send("POST", "envelopes", "{").status, 400);
    EXPECT_TRUE(service.receivedEnvelopes().empty());
}

TEST_F(Envelopes, RecipientsComeAndGo) {
    const std::string recipients = consentEnvelope() + "/recipients";
    const std::string added = R"({"carbonCopies":[{"recipientId":"7","name":"Cy","email":"cy@x.example"}]})";
    EXPECT_EQ(client.send("POST", recipients, added).status, 201);
    EXPECT_EQ(client.send("POST", recipients, added).errorCode(), "INVALID_RECIPIENT_ID");
    EXPECT_EQ(client.get(recipients).json().text("recipientCount"), "2");
    EXPECT_EQ(client.send("DELETE", recipients, R"({"carbonCopies":[{"recipientId":"7"}]})").status, 200);
    EXPECT_EQ(
        client.send("DELETE", recipients, R"({"signers":[{"recipientId":"1"},{"recipientId":"8"}]})").status,
        404);
    EXPECT_EQ(client.get(recipients).json().array("signers").size(), 1U)
        << "a refused change changes nothing";
    const std::string renamed = R"({"signers":[{"recipientId":"1","name":"Ada Lovelace"}]})";
    EXPECT_EQ(client.send("PUT", recipients, renamed).status, 200);
    EXPECT_EQ(client.get(recipients).json().array("signers").at(0).text("name"), "Ada Lovelace");
    EXPECT_EQ(client.get(recipients).json().array("signers").at(0).text("email"), "ada@x.example");
    EXPECT_EQ(client.get("envelopes/" + newUuid() + "/recipients").errorCode(), "ENVELOPE_DOES_NOT_EXIST");
}

TEST_F(Envelopes, TabsImagesAndViewsBelongToARecipient) {
    const std::string path = consentEnvelope();
    const std::string recipient = path + "/recipients/1";
    const Reply added = client.send("POST", recipient + "/tabs", R"({"noteTabs":[{"tabLabel":"Remark"}]})");
    ASSERT_EQ(added.status, 201);
    EXPECT_TRUE(isUuid(added.json().array("noteTabs").at(0).text("tabId")));
    EXPECT_EQ(client.get(recipient + "/tabs").json().array("noteTabs").size(), 1U);
    const std::string tab = R"({"noteTabs":[{"tabId":")" +
                            added.json().array("noteTabs").at(0).text("tabId") + R"(","value":"x"}]})";
    EXPECT_EQ(client.send("PUT", recipient + "/tabs", tab).json().array("noteTabs").at(0).text("tabLabel"),
              "Remark");
    EXPECT_EQ(client.send("DELETE", recipient + "/tabs", tab).status, 200);
    EXPECT_EQ(client.send("DELETE", recipient + "/tabs", tab).status, 404);
    EXPECT_TRUE(client.get(recipient + "/tabs").json().array("noteTabs").empty());
    EXPECT_EQ(client.send("POST", recipient + "/tabs", R"({"noteTabs":[{"tabLabel":7}]})").status, 400);
    EXPECT_EQ(client.get(recipient + "/signature").status, 404);
    EXPECT_EQ(client.send("PUT", recipient + "/signature", "no image", "image/png").status, 400);
    EXPECT_EQ(client.send("PUT", recipient + "/signature", samplePng(), "image/png").status, 200);
    EXPECT_EQ(client.get(recipient + "/signature").body, samplePng());
    EXPECT_EQ(client.get(path + "/recipients/9/signature").errorCode(), "RECIPIENT_NOT_IN_ENVELOPE");
    Json view = Json::object(
        {{"userName", "ada finch"}, {"email", "ada@x.example"}, {"authenticationMethod", "Password"}});
    EXPECT_EQ(client.send("POST", path + "/views/recipient", view.write()).status, 400)
        << "no return address";
    view.set("returnUrl", "https://bridge.invalid/");
    const Reply url = client.send("POST", path + "/views/recipient", view.write());
    EXPECT_TRUE(url.json().text("url").starts_with(service.url() + "/Member/Norvane.aspx?")) << url.body;
    view.set("email", "other@x.example");
    EXPECT_EQ(client.send("POST", path + "/views/recipient", view.write()).errorCode(),
              "UNKNOWN_ENVELOPE_RECIPIENT");
}

TEST_F(Envelopes, AreListedByStatusIdAndDate) {
    const std::string draft = consentEnvelope("created"), sent = consentEnvelope();
    const auto count = [&](const std::string& query) {
        return client.get("envelopes?" + query).json().text("totalSetSize");
    };
    EXPECT_EQ(count("status=any"), "2");
    EXPECT_EQ(count("status=sent,completed"), "1");
    EXPECT_EQ(count("from_to_status=created"), "1");
    EXPECT_EQ(count("envelope_ids=" + draft.substr(10) + "," + newUuid()), "1");
    EXPECT_EQ(count("from_date=2020-01-01"), "2");
    EXPECT_EQ(count("to_date=2020-01-01"), "0");
    const Json page = client.get("envelopes?start_position=1&count=1").json();
    EXPECT_EQ(page.array("envelopes").at(0).text("envelopeId"), sent.substr(10));
    const std::string ids = R"({"envelopeIds":[")" + sent.substr(10) + R"("]})";
    EXPECT_EQ(client.send("PUT", "envelopes/status", ids).json().array("envelopes").size(), 1U);
    EXPECT_EQ(client.send("PUT", "envelopes/status", "{}").status, 400);
}

TEST_F(Envelopes, AreSentVoidedAndThenClosed) {
    const std::string path = consentEnvelope("created");
    const std::string voided = R"({"status":"voided","voidedReason":"A mistake."})";
    EXPECT_EQ(client.send("PUT", path, voided).errorCode(), "INVALID_REQUEST_BODY") << "not sent yet";
    EXPECT_EQ(client.send("PUT", path, R"({"status":"sent"})").status, 200);
    EXPECT_EQ(client.send("PUT", path, R"({"status":"voided"})").status, 400) << "without a reason";
    EXPECT_EQ(client.send("PUT", path, voided).status, 200);
    const Json json = client.get(path).json();
    EXPECT_EQ(json.text("status"), "voided");
    EXPECT_EQ(json.text("voidedReason"), "A mistake.");
    const Reply late = client.send("PUT", path + "/recipients/1/signature", samplePng(), "image/png");
    EXPECT_EQ(late.status, 403);
    EXPECT_EQ(late.errorCode(), "ENVELOPE_IS_CLOSED");
    EXPECT_FALSE(client.get(path + "/audit_events").json().array("auditEvents").empty());
}

TEST_F(Envelopes, LieInFoldersAndAreFoundThere) {
    const std::string path = consentEnvelope();
    const auto named = [&](const std::string& name) { return "folders/" + folderIdOf(name); };
    EXPECT_EQ(client.get(named("Sent Items")).json().array("folderItems").size(), 1U);
    EXPECT_EQ(client.get(named("Drafts")).json().array("folderItems").size(), 0U);
    const std::string ids = R"({"envelopeIds":[")" + path.substr(10) + R"("]})";
    EXPECT_EQ(client.send("PUT", named("Recycle Bin"), ids).status, 200);
    EXPECT_EQ(client.get(named("Sent Items")).json().text("totalSetSize"), "0");
    EXPECT_EQ(client.get(named("Recycle Bin")).json().text("totalSetSize"), "1");
    EXPECT_EQ(client.send("PUT", named("Sales"), ids).errorCode(), "FOLDER_NOT_ALLOWED");
    EXPECT_EQ(client.get(named("Sales")).json().array("folderItems").size(), 2U) << "its templates";
    EXPECT_EQ(client.get("folders/" + newUuid()).errorCode(), "FOLDER_NOT_FOUND");
    EXPECT_EQ(client.get("search_folders/out_for_signature").json().array("folderItems").size(), 1U);
    EXPECT_EQ(client.get("search_folders/awaiting_my_signature").json().array("folderItems").size(), 0U);
    EXPECT_EQ(client.get("search_folders/nothing").status, 404);
}

} // namespace norvane::sandbox
