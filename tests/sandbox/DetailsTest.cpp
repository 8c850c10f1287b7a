#include "sandbox/DocumentCheck.h"
#include "tests/sandbox/SampleEnvelope.h"
#include "tests/sandbox/SandboxFixture.h"

namespace norvane::sandbox {

namespace {

/// What envelopes and templates have alike is tested on both.
class Details : public SandboxFixture {
  protected:
    std::vector<std::string> both() {
        return {consentEnvelope(), std::string("templates/") + kRentalTemplateId};
    }
};

} // namespace

TEST_F(Details, CustomFieldsAreAddedChangedAndDeleted) {
    for (const std::string& path : both()) {
        const std::string fields = path + "/custom_fields";
        EXPECT_TRUE(client.get(fields).json().array("textCustomFields").empty());
        const Reply added = client.send("POST", fields, R"({"textCustomFields":[{"name":"Region"}]})");
        ASSERT_EQ(added.status, 201);
        const std::string id = added.json().array("textCustomFields").at(0).text("fieldId");
        const std::string named = R"({"textCustomFields":[{"fieldId":")" + id + R"(","value":"North"}]})";
        EXPECT_EQ(client.send("POST", fields, named).status, 400) << "the id is taken";
        EXPECT_EQ(client.send("PUT", fields, named).status, 200);
        const Json kept = client.get(fields).json().array("textCustomFields").at(0);
        EXPECT_EQ(kept.text("name") + kept.text("value"), "RegionNorth");
        EXPECT_EQ(client.get(path).json().find("customFields")->array("textCustomFields").size(), 1U);
        EXPECT_EQ(client.send("DELETE", fields, named).status, 200);
        EXPECT_EQ(client.send("DELETE", fields, named).status, 404);
        EXPECT_EQ(client.send("PUT", fields, R"({"textCustomFields":["x"]})").status, 400);
    }
}

TEST_F(Details, ALockKeepsOthersOutUntilItIsGivenBack) {
    for (const std::string& path : both()) {
        const std::string lock = path + "/lock";
        EXPECT_EQ(client.get(lock).errorCode(), "LOCK_NOT_FOUND");
        EXPECT_EQ(client.send("PUT", lock, "{}").status, 404);
        EXPECT_EQ(client.send("POST", lock, R"({"lockDurationInSeconds":"soon"})").status, 400);
        EXPECT_EQ(client.send("POST", lock, R"({"lockedByApp":"test"})").status, 201);
        EXPECT_EQ(client.send("POST", lock, "{}").errorCode(), "EDIT_LOCK_IS_TAKEN");
        const std::string until = client.get(lock).json().text("lockedUntilDateTime");
        EXPECT_GT(
            client.send("PUT", lock, R"({"lockDurationInSeconds":"900"})").json().text("lockedUntilDateTime"),
            until);
        EXPECT_EQ(client.send("DELETE", lock).status, 200);
        EXPECT_EQ(client.get(lock).status, 404);
    }
}

TEST_F(Details, NotificationAndFieldsOfDocumentsAreKept) {
    for (const std::string& path : both()) {
        EXPECT_EQ(client.send("PUT", path + "/notification", R"({"useAccountDefaults":"true"})").status, 200);
        EXPECT_EQ(client.get(path + "/notification").json().text("useAccountDefaults"), "true");
        const std::string fields = path + "/documents/1/fields";
        const std::string field = R"({"documentFields":[{"name":"Branch","value":"7"}]})";
        EXPECT_EQ(client.send("POST", fields, field).status, 201);
        EXPECT_EQ(client.get(fields).json().array("documentFields").at(0).text("value"), "7");
        EXPECT_EQ(client.send("POST", path + "/documents/9/fields", field).status, 404);
    }
}

TEST_F(Details, ATemplatesRecipientsAndTabsChangeForTheEnvelopesMadeOfIt) {
    const std::string path = std::string("templates/") + kConsentTemplateId;
    const std::string tabs = path + "/recipients/1/tabs";
    EXPECT_EQ(client.send("POST", tabs, R"({"noteTabs":[{"tabLabel":"Remark"}]})").status, 201);
    const std::string copied = R"({"carbonCopies":[{"recipientId":"7","name":"Cy","email":"cy@x.example"}]})";
    EXPECT_EQ(client.send("POST", path + "/recipients", copied).status, 201);
    EXPECT_EQ(client.get(path).json().find("recipients")->array("carbonCopies").size(), 1U);
    const std::string made = consentEnvelope();
    EXPECT_EQ(client.get(made + "/recipients/1/tabs").json().array("noteTabs").size(), 1U);
    EXPECT_EQ(client.send("DELETE", made + "/recipients/7").json().text("name"), "Cy");
    EXPECT_EQ(client.send("DELETE", made + "/recipients/7").errorCode(), "RECIPIENT_NOT_IN_ENVELOPE");
    EXPECT_EQ(client.get(made + "/recipients/1/consumer_disclosure").status, 200);
    EXPECT_EQ(client.send("POST", made + "/email_settings", R"({"replyEmailAddressOverride":"a@x.example"})")
                  .status,
              201);
    EXPECT_EQ(client.send("DELETE", made + "/email_settings").status, 200);
    EXPECT_TRUE(client.get(made + "/email_settings").json().members().empty());
    EXPECT_EQ(client.send("POST", made + "/views/sender", R"({"returnUrl":"https://x.example"})").status,
              201);
}

TEST_F(Details, OfASandboxOutliveIt) {
    const std::string path = consentEnvelope();
    client.send("PUT", path + "/notification", R"({"useAccountDefaults":"true"})");
    client.send("PUT", "settings", R"({"accountSettings":[{"name":"allowOfflineSigning","value":"false"}]})");
    service.stop();
    SandboxService again(optionsFor(folder.path()));
    again.start();
    Client other(again);
    EXPECT_EQ(other.get(path + "/notification").json().text("useAccountDefaults"), "true");
    bool found = false;
    for (const Json& setting : other.get("settings").json().array("accountSettings"))
        found = found || (setting.text("name") == "allowOfflineSigning" && setting.text("value") == "false");
    EXPECT_TRUE(found);
    EXPECT_EQ(other.send("PUT", "settings", R"({"accountSettings":[{"name":"x","value":"y"}]})").status, 404);
}

TEST_F(Details, DocumentsHavePagesAndJoin) {
    const SampleEnvelope sample;
    const Reply made = client.send("POST", "envelopes", sample.body(), SampleEnvelope::contentType());
    const std::string uploaded = "envelopes/" + made.json().text("envelopeId");
    const std::string source = std::string("templates/") + kRentalTemplateId;
    for (const std::string& path : {uploaded, source}) {
        const std::string list = path == source ? "templateDocuments" : "envelopeDocuments";
        EXPECT_EQ(client.get(path + "/documents").json().array(list).size(), 2U);
        const Reply joined = client.get(path + "/documents/combined");
        EXPECT_EQ(checkPdf(joined.body).pages, 2) << checkPdf(joined.body).error;
        const Json pages = client.get(path + "/documents/1/pages").json();
        EXPECT_EQ(pages.array("pages").at(0).text("height"), "792");
        EXPECT_EQ(client.get(path + "/documents/7/pages").errorCode(), "DOCUMENT_DOES_NOT_EXIST");
    }
}

TEST_F(Details, TheAccountHasUsersTabDefinitionsAndALogOfRequests) {
    EXPECT_EQ(client.get("users").json().array("users").at(0).text("userId"), user().userId);
    EXPECT_EQ(client.get("users/" + user().userId).json().text("email"), user().email);
    EXPECT_EQ(client.get("users/1").errorCode(), "USER_NOT_FOUND");
    for (const char* path : {"custom_fields", "shared_access", "unsupported_file_types"})
        EXPECT_EQ(client.get(path).status, 200) << path;

    const Reply made = client.send("POST", "tab_definitions", R"({"type":"text","tabLabel":"IBAN"})");
    const std::string one = "tab_definitions/" + made.json().text("customTabId");
    EXPECT_EQ(client.send("PUT", one, R"({"tabLabel":"BIC"})").json().text("type"), "text");
    EXPECT_EQ(client.get("tab_definitions").json().array("tabs").at(0).text("tabLabel"), "BIC");
    EXPECT_EQ(client.send("DELETE", one).status, 200);
    EXPECT_EQ(client.get(one).status, 404);

    EXPECT_FALSE(client.get("/v2/diagnostics/request_logs").json().array("apiRequestLogs").empty());
    EXPECT_EQ(client.get("/v2/diagnostics/request_logs/1").status, 200);
    EXPECT_EQ(client.sendWith({}, "GET", "/v2/diagnostics/settings").status, 401);
    EXPECT_EQ(client.send("PUT", "/v2/diagnostics/settings", R"({"apiRequestLogging":"false"})")
                  .json()
                  .text("apiRequestLogMaxEntries"),
              "10000");
    EXPECT_EQ(client.sendWith({}, "GET", "/service_information").status, 200);
    EXPECT_EQ(client.sendWith({}, "GET", "/v2").status, 200);
}

} // namespace norvane::sandbox
