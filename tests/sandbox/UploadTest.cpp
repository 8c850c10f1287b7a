#include "sandbox/PrivateFile.h"
#include "tests/sandbox/SampleEnvelope.h"
#include "tests/sandbox/SandboxFixture.h"

namespace norvane::sandbox {

namespace {

class UploadTest : public SandboxFixture {
  protected:
    Reply upload(const SampleEnvelope& envelope) {
        return client.send("POST", "envelopes", envelope.body(), SampleEnvelope::contentType());
    }
    /// Expects a refusal whose message holds `why`, and that nothing is kept.
    void expectRefused(const SampleEnvelope& envelope, const std::string& why) {
        const Reply reply = upload(envelope);
        EXPECT_EQ(reply.status, 400) << why;
        EXPECT_NE(reply.json().text("message").find(why), std::string::npos)
            << why << " gave: " << reply.body;
        EXPECT_TRUE(service.receivedEnvelopes().empty()) << why;
    }
};

} // namespace

TEST_F(UploadTest, IsAnsweredWithASummaryAndKeptByteForByte) {
    const SampleEnvelope sent;
    const Reply reply = upload(sent);
    ASSERT_EQ(reply.status, 201) << reply.body;
    ASSERT_EQ(service.receivedEnvelopes().size(), 1U);
    const ReceivedEnvelope kept = service.receivedEnvelopes().front();
    EXPECT_EQ(reply.json().text("envelopeId"), kept.envelopeId);
    EXPECT_EQ(reply.json().text("uri"), "/envelopes/" + kept.envelopeId);
    EXPECT_EQ(reply.json().text("status"), "completed") << "its only signer has signed";
    EXPECT_EQ(kept.transactionId, sent.transactionId());
    EXPECT_EQ(kept.json, sent.json.write());
    EXPECT_TRUE(kept.warnings.empty()) << kept.warnings.front();
    ASSERT_EQ(kept.documents.size(), 2U);
    ASSERT_EQ(kept.images.size(), 2U);
    EXPECT_EQ(readFile(kept.documents[1].path), sent.parts[1].body);
    EXPECT_EQ(readFile(kept.images[0].path), sent.parts[2].body);
    EXPECT_EQ(kept.documents[0].sha256, sha256Hex(sent.parts[0].body));
    const std::string headers = readFile(kept.folder / "parts" / "02.headers").value();
    EXPECT_EQ(headers,
              "Content-Disposition: " + sent.parts[0].disposition + "\r\nContent-Type: application/pdf\r\n");
    EXPECT_EQ(client.get("envelopes/" + kept.envelopeId + "/documents/2").body, sent.parts[1].body);
}

TEST_F(UploadTest, SentTwiceMakesTwoEnvelopesOfOneTransaction) {
    const SampleEnvelope sent;
    const SampleEnvelope other;
    for (const SampleEnvelope* each : {&sent, &sent, &other})
        EXPECT_EQ(upload(*each).status, 201);
    const Json found = client.get("envelopes?transaction_ids=x," + sent.transactionId()).json();
    ASSERT_EQ(found.array("envelopeTransactionStatuses").size(), 2U);
    const auto& statuses = found.array("envelopeTransactionStatuses");
    EXPECT_NE(statuses[0].text("envelopeId"), statuses[1].text("envelopeId"));
    EXPECT_EQ(statuses[1].text("transactionId"), sent.transactionId());
    EXPECT_EQ(found.array("envelopes").size(), 2U);
    EXPECT_EQ(client.get("envelopes").json().text("totalSetSize"), "3");
}

TEST_F(UploadTest, IsThereAgainAfterARestart) {
    const SampleEnvelope sent;
    const std::string id = upload(sent).json().text("envelopeId");
    const auto before = service.receivedEnvelopes().front();
    service.stop();
    std::filesystem::create_directory(folder.path() / "envelopes" / ".new-left-by-a-dead-writer");
    SandboxService again(optionsFor(folder.path()));
    again.start();
    ASSERT_EQ(again.receivedEnvelopes().size(), 1U);
    EXPECT_EQ(again.receivedEnvelopes()[0].json, before.json);
    EXPECT_EQ(again.receivedEnvelopes()[0].images[1].sha256, before.images[1].sha256);
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "envelopes" / ".new-left-by-a-dead-writer"));
    Client other(again);
    EXPECT_EQ(other.get("envelopes/" + id + "/recipients").json().text("recipientCount"), "1");
}

TEST_F(UploadTest, FormOfThePartsIsTakenStrictly) {
    const auto changed = [](auto change) {
        SampleEnvelope envelope;
        change(envelope);
        return envelope;
    };
    using Sample = SampleEnvelope;
    expectRefused(changed([](Sample& e) { e.disposition = "form-data; name=\"envelope\""; }),
                  "not named (null)");
    expectRefused(changed([](Sample& e) { e.disposition = "form-data; name=(null)"; }), "not quoted");
    expectRefused(changed([](Sample& e) { e.disposition = "attachment; name=\"(null)\""; }), "not form-data");
    expectRefused(changed([](Sample& e) { e.jsonType = "text/plain"; }), "not application/json");
    expectRefused(changed([](Sample& e) { e.parts[0].contentType = "image/png"; }),
                  "does not fit the filename");
    expectRefused(changed([](Sample& e) { e.parts[3].contentType = "image/jpeg"; }), "not image/png");
    expectRefused(changed([](Sample& e) { e.parts[3].contentType += "\r\nX-Extra: 1"; }),
                  "unexpected header X-Extra");
    expectRefused(changed([](Sample& e) { std::swap(e.parts[1], e.parts[2]); }),
                  "a document follows an image");
    expectRefused(changed([](Sample& e) {
                      e.parts.push_back({e.disposition, e.jsonType, "{}"});
                  }),
                  "first and once");
    expectRefused(changed([](Sample& e) { e.parts[2].disposition.insert(11, "name=\"tab\"; "); }), "neither");
    expectRefused(changed([](Sample& e) {
                      e.parts[0].disposition =
                          R"(form-data; filename="a.pdf"; name="documentId-1"; documentId="1")";
                  }),
                  "neither");
    expectRefused(changed([](Sample& e) {
                      e.parts[0].disposition =
                          R"(form-data; name="documentId-2"; filename="a.pdf"; documentId="1")";
                  }),
                  "not documentId- and the id");
}

TEST_F(UploadTest, EnvelopeAndPartsMustBelongTogether) {
    const auto changed = [](auto change) {
        SampleEnvelope envelope;
        change(envelope);
        return envelope;
    };
    using Sample = SampleEnvelope;
    expectRefused(changed([](Sample& e) { e.json.erase("transactionId"); }), "transactionId");
    expectRefused(changed([](Sample& e) { e.json.set("status", "created"); }), "status is not sent");
    expectRefused(changed([](Sample& e) { e.json.erase("DisableResponsiveDocument"); }),
                  "DisableResponsiveDocument");
    expectRefused(changed([](Sample& e) { e.signer().set("canSignOffline", true); }),
                  "recipients.inPersonSigners[0].canSignOffline must be text");
    expectRefused(changed([](Sample& e) { e.tab("textTabs").set("width", "80"); }), "width must be a number");
    expectRefused(changed([](Sample& e) { e.signer().set("note", Json()); }), "note must be text");
    expectRefused(changed([](Sample& e) { e.parts.erase(e.parts.begin()); }), "document 1 has no part");
    expectRefused(changed([](Sample& e) { e.json.find("documents")->mutableItems()->pop_back(); }),
                  "belongs to no document");
    expectRefused(changed([](Sample& e) { e.parts[0].body.resize(e.parts[0].body.size() / 2); }),
                  "document 1: it does not open");
    expectRefused(changed([](Sample& e) { e.parts[0].body = "no PDF"; }), "does not begin as a PDF");
    expectRefused(changed([](Sample& e) { e.parts[2].body = "no PNG"; }), "does not begin as a PNG");
    expectRefused(changed([](Sample& e) { e.parts[2].body[50] ^= 1; }), "does not decode");
    expectRefused(changed([](Sample& e) { e.parts[2].disposition = "form-data; tabId=\"17\""; }),
                  "belongs to no tab");
    expectRefused(changed([](Sample& e) { e.parts.push_back(e.parts[2]); }), "comes twice");
    expectRefused(changed([](Sample& e) { e.tab("signHereTabs").set("imageDataBase64", "AAAA"); }),
                  "in the JSON");
    expectRefused(changed([](Sample& e) { e.tab("textTabs").set("pageNumber", "2"); }), "on no page");
    expectRefused(changed([](Sample& e) { e.tab("textTabs").set("documentId", "9"); }), "on no document");
    expectRefused(changed([](Sample& e) { e.tab("textTabs").set("recipientId", "9"); }), "another recipient");
    expectRefused(changed([](Sample& e) { e.json.erase("recipients"); }), "has no signer");
}

TEST_F(UploadTest, BrokenBodiesAreRefused) {
    const std::string whole = SampleEnvelope().body();
    const auto statusOf = [&](const std::string& body, const std::string& type) {
        return client.send("POST", "envelopes", body, type).status;
    };
    EXPECT_EQ(statusOf(whole, "multipart/form-data"), 400);
    EXPECT_EQ(statusOf(whole, "multipart/form-data; boundary=other"), 400);
    EXPECT_EQ(statusOf(whole.substr(0, whole.size() / 2), SampleEnvelope::contentType()), 400);
    EXPECT_EQ(statusOf(whole, "text/plain"), 415);
    EXPECT_EQ(statusOf(std::string((8 << 20) + 1, 'x'), SampleEnvelope::contentType()), 413);
    EXPECT_TRUE(service.receivedEnvelopes().empty());
}

TEST_F(UploadTest, WhatLooksForgottenIsNoted) {
    SampleEnvelope sent;
    sent.parts.pop_back();
    sent.tab("textTabs").set("value", "");
    ASSERT_EQ(upload(sent).status, 201);
    const auto warnings = service.receivedEnvelopes().front().warnings;
    ASSERT_EQ(warnings.size(), 2U);
    EXPECT_NE((warnings[0] + warnings[1]).find("has no image"), std::string::npos);
    EXPECT_NE((warnings[0] + warnings[1]).find("is required and empty"), std::string::npos);
}

} // namespace norvane::sandbox
