#include "sandbox/Template.h"
#include "tests/sandbox/SampleEnvelope.h"
#include "tests/sandbox/SandboxFixture.h"

namespace norvane::sandbox {

namespace {

class Envelopes : public SandboxFixture {
  protected:
    Reply create(const Json& definition) { return client.send("POST", "envelopes", definition.write()); }
    /// Path of an envelope made from the consent, with its participant named.
    std::string consentEnvelope() {
        const Json role =
            Json::object({{"roleName", "Participant"}, {"name", "Ada Finch"}, {"email", "ada@x.example"}});
        Json definition = Json::object({{"status", "sent"}, {"templateId", kConsentTemplateId}});
        definition.set("templateRoles", Json::Array{role});
        return "envelopes/" + create(definition).json().text("envelopeId");
    }
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
    EXPECT_EQ(client.get(path + "/documents/1").body, findTemplate(kConsentTemplateId)->documents[0].pdf);
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
    EXPECT_EQ(client.get("envelopes/" + newUuid() + "/recipients").errorCode(), "ENVELOPE_DOES_NOT_EXIST");
}

TEST_F(Envelopes, TabsImagesAndViewsBelongToARecipient) {
    const std::string path = consentEnvelope();
    const std::string recipient = path + "/recipients/1";
    const Reply added = client.send("POST", recipient + "/tabs", R"({"noteTabs":[{"tabLabel":"Remark"}]})");
    ASSERT_EQ(added.status, 201);
    EXPECT_TRUE(isUuid(added.json().array("noteTabs").at(0).text("tabId")));
    EXPECT_EQ(client.get(recipient + "/tabs").json().array("noteTabs").size(), 1U);
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

} // namespace norvane::sandbox
