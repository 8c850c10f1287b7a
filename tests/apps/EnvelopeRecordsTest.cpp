#include "tests/apps/CommandLine.h"

#include <norvane/platform/Json.h>

#include <fstream>

namespace norvane {
namespace {

class EnvelopeRecordsTest : public CommandLine {
  protected:
    std::filesystem::path written(const std::string& name, const std::string& text) const {
        std::ofstream(folder_.path() / name) << text;
        return folder_.path() / name;
    }
    Run imported(const std::string& text) const {
        return run({"--json", "envelopes", "import", written("envelope.json", text).string()});
    }
    Dictionary shown(const std::string& id) const {
        const Run run = CommandLine::run({"--json", "envelopes", "show", id});
        EXPECT_EQ(run.status, 0) << run.errors;
        const Value document = run.json();
        return document.isDictionary() ? *document.asDictionary() : Dictionary();
    }
};

constexpr const char* kEnvelope = R"({
  "account": {"userId": "u1", "userName": "Ann", "email": "ann@example.com"},
  "emailSubject": "Lease", "disclosureSetting": 1, "currentRoutingOrder": 2,
  "documents": [{"documentId": "1", "name": "lease", "sandboxFilePath": "lease.pdf"}],
  "recipients": {"signers": [{"recipientId": "1", "name": "Ann", "email": "ann@example.com", "routingOrder": 2,
    "tabs": {"textTabs": [{"tabId": "t1", "value": "x", "frame": {"originX": 72, "originY": 100}}],
             "radioGroupTabs": [{"groupName": "Size", "radios": [{"tabId": "r1", "selected": true}]}]}}]}})";

TEST_F(EnvelopeRecordsTest, AnEnvelopeIsImportedShownWholeAndImportedAgain) {
    signIn();
    written("lease.pdf", "%PDF-1.7 lease");
    const Run first = imported(kEnvelope);
    ASSERT_EQ(first.status, 0) << first.errors;
    const std::string id = first.json()["envelopeId"].stringValue().value_or("");
    EXPECT_EQ(first.json()["transactionId"], Value(id));
    EXPECT_TRUE(std::filesystem::exists(folder_.path() / "lease.pdf")) << "the given file stays";

    Dictionary record = shown(id);
    EXPECT_EQ(record["emailSubject"], Value("Lease"));
    EXPECT_EQ(record["currentRoutingOrder"], Value(2));
    EXPECT_EQ(record["documents"].asArray()->front()["pdf"], Value("JVBERi0xLjcgbGVhc2U="));
    const Value signer = record["recipients"]["signers"].asArray()->front();
    const Value text = signer["tabs"]["textTabs"].asArray()->front();
    EXPECT_EQ(text["frame"]["originY"], Value(100));
    const Value group = signer["tabs"]["radioGroupTabs"].asArray()->front();
    EXPECT_EQ(group["radios"].asArray()->front()["selected"], Value(true));

    const Run second = imported(writeJson(record));
    ASSERT_EQ(second.status, 0) << second.errors;
    Dictionary again = shown(second.json()["envelopeId"].stringValue().value_or(""));
    EXPECT_NE(again["envelopeId"], record["envelopeId"]);
    EXPECT_NE(again["documents"].asArray()->front()["sandboxFilePath"],
              record["documents"].asArray()->front()["sandboxFilePath"]);
    EXPECT_EQ(again["recipients"], record["recipients"]);
    EXPECT_EQ(envelopesOnDevice(home_), 2u);
}

TEST_F(EnvelopeRecordsTest, WhatIsWrongIsNamedAndNothingIsKept) {
    signIn();
    for (const auto& [text, reason] :
         {std::pair{"{\"recipients\": {\"signers\": [{\"recipientID\": \"1\"}]}}",
                    "recipients.signers[0].recipientID"},
          std::pair{kEnvelope, "lease"}, std::pair{"[]", "object"}}) {
        const Run run = imported(text);
        EXPECT_EQ(run.status, 1) << text;
        EXPECT_NE(run.errors.find(reason), std::string::npos) << run.errors;
    }
    EXPECT_EQ(envelopesOnDevice(home_), 0u);
    EXPECT_EQ(run({"envelopes", "show", "none"}).status, 1);

    const auto pdf = written("lease.pdf", "%PDF-1.7 lease");
    const std::string id = imported(kEnvelope).json()["envelopeId"].stringValue().value_or("");
    const std::string path = *shown(id)["documents"].asArray()->front()["sandboxFilePath"].stringValue();
    std::ofstream(home_ / "Documents" / path.substr(1), std::ios::app) << "!";
    const Run run = CommandLine::run({"--json", "envelopes", "show", id});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.errors.find("\"lease\""), std::string::npos) << run.errors;
}

} // namespace
} // namespace norvane
