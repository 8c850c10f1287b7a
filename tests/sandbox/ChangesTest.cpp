#include "sandbox/DocumentCheck.h"
#include "sandbox/EnvelopeCheck.h"
#include "sandbox/Template.h"
#include "tests/sandbox/SampleEnvelope.h"
#include "tests/sandbox/SandboxFixture.h"

#include <cstdint>

namespace norvane::sandbox {

namespace {

std::string base64(const std::string& bytes) {
    constexpr const char* kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        std::uint32_t bits = 0;
        for (std::size_t i = at; i < at + 3; ++i)
            bits = bits << 8 | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U);
        for (std::size_t i = 0; i < 4; ++i)
            text += at + i > bytes.size() ? '=' : kAlphabet[bits >> (18 - 6 * i) & 63];
    }
    return text;
}

/// Templates and drafts that change after they were made.
class Changes : public SandboxFixture {
  protected:
    static Json documentJson(const std::string& id) {
        return Json::object({{"documentId", id},
                             {"name", "terms.pdf"},
                             {"documentBase64", base64(offeredTemplate(kLeaseTemplateId).documents[0].pdf)}});
    }
    static Json documents(const std::string& id) {
        return Json::object({{"documents", Json::Array{documentJson(id)}}});
    }
    std::string madeTemplate() {
        Json body = documents("1");
        body.set("envelopeTemplateDefinition", Json::object({{"name", "Terms"}, {"folderName", "Own"}}));
        body.set("recipients", parseJson(R"({"signers":[{"recipientId":"1","roleName":"Buyer","tabs":{)"
                                         R"("textTabs":[{"tabLabel":"A","documentId":"1","pageNumber":"1"},)"
                                         R"({"tabLabel":"B","documentId":"1","pageNumber":"2"}]}}]})")
                                   .value);
        body.set("customFields", parseJson(R"({"textCustomFields":[{"name":"Region"}]})").value);
        const Reply made = client.send("POST", "templates", body.write());
        EXPECT_EQ(made.status, 201) << made.body;
        return made.json().text("templateId");
    }
    Json signer(const std::string& path) {
        return client.get(path + "/recipients?include_tabs=true").json().array("signers").at(0);
    }
};

} // namespace

TEST_F(Changes, AMadeTemplateIsListedUsedChangedAndOutlivesTheService) {
    const std::string id = madeTemplate();
    const std::string path = "templates/" + id;
    EXPECT_EQ(client.get("templates?folder=Own").json().array("envelopeTemplates").at(0).text("name"),
              "Terms");
    const Json made = client.get(path).json();
    EXPECT_EQ(made.find("envelopeTemplateDefinition")->find("pageCount")->asInteger(), 2);
    EXPECT_EQ(made.find("customFields")->array("textCustomFields").size(), 1U);
    EXPECT_EQ(client.send("PUT", path, R"({"envelopeTemplateDefinition":{"name":"New terms"}})").status, 200);
    EXPECT_EQ(client.send("PUT", path, R"({"envelopeTemplateDefinition":{"name":""}})").status, 400);
    EXPECT_EQ(client.send("PUT", path, documents("2").write()).status, 200);
    EXPECT_EQ(client.send("POST", "templates", "{}").status, 400);
    for (const char* odd : {"[1]", R"({"signers":{"a":"b"}})", R"({"signers":["a"]})"})
        EXPECT_EQ(client.send("PUT", path, std::string(R"({"recipients":)") + odd + "}").status, 400) << odd;

    service.stop();
    SandboxService again(optionsFor(folder.path()));
    again.start();
    Client other(again);
    const Json kept = other.get(path).json();
    EXPECT_EQ(kept.find("envelopeTemplateDefinition")->text("name"), "New terms");
    EXPECT_EQ(kept.find("recipients")->array("signers").at(0).text("roleName"), "Buyer");
    EXPECT_EQ(checkPdf(other.get(path + "/documents/combined").body).pages, 4);
    const Reply envelope = other.send("POST", "envelopes", R"({"status":"sent","templateId":")" + id + "\"}");
    EXPECT_EQ(envelope.status, 201) << envelope.body;
}

TEST_F(Changes, AnOfferedTemplateChangesInThisServiceAlone) {
    const std::string page = std::string("templates/") + kLeaseTemplateId + "/documents/1/pages/2";
    EXPECT_EQ(client.send("PUT", page + "/page_image", R"({"rotate":"right"})").status, 200);
    EXPECT_EQ(client.send("PUT", page + "/page_image", R"({"rotate":"up"})").status, 400);
    EXPECT_EQ(client.send("DELETE", page).status, 200);
    EXPECT_EQ(client.send("DELETE", page).errorCode(), "PAGE_DOES_NOT_EXIST");
    EXPECT_EQ(offeredTemplate(kLeaseTemplateId).pageCount, 2);
    EXPECT_EQ(client.get("templates").json().text("totalSetSize"), "4");
}

TEST_F(Changes, TabsFollowTheirPages) {
    const std::string path = "templates/" + madeTemplate();
    EXPECT_EQ(client.send("DELETE", path + "/documents/1/pages/1").status, 200);
    const Json recipients = client.get(path).json();
    const Json tabs = recipients.find("recipients")->array("signers").at(0).find("tabs")->array("textTabs");
    ASSERT_EQ(tabs.items().size(), 1U);
    EXPECT_EQ(tabs.items()[0].text("tabLabel") + tabs.items()[0].text("pageNumber"), "B1");
    EXPECT_EQ(client.send("DELETE", path + "/documents/1/pages/1").status, 400) << "the last page";
}

TEST_F(Changes, ADraftTakesDocumentsAndTemplatesAndOnceSentNoneAnyMore) {
    const std::string path = consentEnvelope("created");
    EXPECT_EQ(client.send("PUT", path + "/documents", documents("2").write()).status, 200);
    EXPECT_EQ(client.get(path + "/documents").json().array("envelopeDocuments").at(1).text("pages"), "2");

    const std::string id = madeTemplate();
    const Reply applied =
        client.send("POST", path + "/templates", R"({"documentTemplates":[{"templateId":")" + id + "\"}]}");
    ASSERT_EQ(applied.status, 201) << applied.body;
    EXPECT_EQ(applied.json().array("documentTemplates").at(0).text("documentId"), "3");
    const Json buyer = client.get(path + "/recipients?include_tabs=true").json().array("signers").at(1);
    EXPECT_EQ(buyer.text("recipientId") + buyer.text("roleName"), "2Buyer");
    EXPECT_EQ(buyer.find("tabs")->array("textTabs").at(0).text("documentId"), "3");
    EXPECT_EQ(client.get(path + "/templates").json().array("templates").size(), 2U);
    EXPECT_EQ(client.get(path + "/documents/3/templates").json().array("templates").at(0).text("templateId"),
              id);

    EXPECT_EQ(client.send("DELETE", path + "/documents", R"({"documents":[{"documentId":"1"}]})").status,
              200);
    forEachTab(signer(path), [](const std::string&, const std::string&, const Json& tab) {
        ADD_FAILURE() << "it was on the document: " << tab.write();
    });
    EXPECT_EQ(checkPng(client.get(path + "/documents/2/pages/2/page_image").body), "");
    EXPECT_EQ(client.get(path + "/documents/2/pages/3/page_image").status, 404);

    EXPECT_EQ(client.send("PUT", path, R"({"status":"sent"})").status, 200);
    const std::string none = "ENVELOPE_IS_NOT_A_DRAFT";
    EXPECT_EQ(client.send("PUT", path + "/documents", documents("4").write()).errorCode(), none);
    EXPECT_EQ(client.send("DELETE", path + "/documents/2/pages/1").errorCode(), none);
}

TEST_F(Changes, WhatTheUserSharesIsKept) {
    const std::string body =
        R"({"sharedAccess":[{"user":{"userId":")" + user().userId + R"("},"templates":[{"shared":"yes"}]}]})";
    EXPECT_EQ(client.send("PUT", "shared_access", body).status, 200);
    EXPECT_EQ(client.get("shared_access").json().array("sharedAccess").size(), 1U);
    EXPECT_EQ(client.send("PUT", "shared_access", R"({"sharedAccess":[{"user":{"userId":"x"}}]})").status,
              404);
}

} // namespace norvane::sandbox
