#include "tests/model/RecordFilling.h"

#include <norvane/model/mapping/EnvelopeJson.h>
#include <norvane/platform/Json.h>
#include <norvane/record/RecordValue.h>

#include <gtest/gtest.h>

namespace norvane {
namespace {

using Names = std::vector<std::string>;

std::string errorOf(std::string_view json) {
    const auto envelope = envelopeFromJson(json);
    return envelope ? "none" : envelope.error().localizedDescription();
}

TEST(EnvelopeJson, KeepsEveryFieldOfEveryRecord) {
    NVMEnvelopeDefinition envelope;
    RecordFiller().fill(NVMEnvelopeDefinition::type(), &envelope);
    const auto read = envelopeFromJson(jsonFromEnvelope(envelope));
    ASSERT_TRUE(read) << read.error().localizedDescription();
    auto lost = differences(envelope, **read);
    // Filled records have arbitrary kinds; reading gives those of their lists.
    std::erase_if(lost, [](const std::string& name) {
        return name.ends_with(".tabType") || name.ends_with(".recipientType");
    });
    EXPECT_EQ(lost, Names());
}

TEST(EnvelopeJson, TakesKindsFromTheListsAndJoinsRadiosToTheirGroups) {
    const auto envelope =
        *envelopeFromJson(R"({"recipients": {"inPersonSigners": [{"recipientType": 7, "tabs": {
        "textTabs": [{"tabType": 4}, {"tabType": 0}, {"tabType": 11}],
        "radioGroupTabs": [{"groupName": "G", "radios": [{}]}]}}]}})");
    const auto& signer = *envelope->recipients->inPersonSigners->front();
    EXPECT_EQ(signer.recipientType, NVMRecipientTypeInPersonSigner);
    std::vector<NVMTabType> types;
    for (const auto& tab : signer.tabs->allTabs())
        types.push_back(tab->tabType);
    EXPECT_EQ(types, (std::vector<NVMTabType>{NVMTabTypeText, NVMTabTypeUnsupported, NVMTabTypeText,
                                              NVMTabTypeRadio}));
    const auto& group = signer.tabs->radioGroupTabs->front();
    EXPECT_EQ(group->radios->front()->radioGroup.lock(), group);
}

TEST(EnvelopeJson, SortsSetsByNameAndOmitsWhatIsAbsent) {
    const auto envelope = *envelopeFromJson(
        R"({"customFields": {"textCustomFields": [{"name": "b", "value": null}, {"name": "a", "show": true}]},
            "documents": [{"order": "2"}, {"order": "1", "pdf": "JVBERg=="}]})");
    const Value values = valuesFromEnvelope(*envelope);
    EXPECT_EQ(writeJson(values["customFields"]),
              R"({"textCustomFields":[{"name":"a","required":false,)"
              R"("show":true},{"name":"b","required":false,"show":false}]})");
    const Array& documents = *values["documents"].asArray();
    EXPECT_EQ(documents[0]["order"].stringValue(), "2") << "a list keeps its order";
    EXPECT_EQ(documents[1]["pdf"].asData()->view(), "%PDF");
    EXPECT_EQ(values["emailSubject"], Value());
}

TEST(EnvelopeJson, NamesWhatItCannotRead) {
    EXPECT_EQ(errorOf(R"({"recipients": {"signers": [{}, {"nom": 1}]}})"),
              R"("recipients.signers[1].nom" is not a field of NVMSigner.)");
    EXPECT_EQ(errorOf(R"({"sentDateTime": "yesterday"})"),
              R"("sentDateTime" must be a date like 2026-01-31T12:00:00.000Z.)");
    EXPECT_EQ(errorOf(R"({"currentRoutingOrder": 1.5})"), R"("currentRoutingOrder" must be a whole number.)");
    EXPECT_EQ(errorOf(R"({"currentRoutingOrder": 2.0})"), "none");
    EXPECT_EQ(errorOf(R"({"combinedDocument": {"pdf": "%PDF"}})"),
              R"("combinedDocument.pdf" must be bytes in base64.)");
    EXPECT_EQ(errorOf("[]"), "An envelope must be an object.");
    EXPECT_NE(errorOf("{"), "none");
}

} // namespace
} // namespace norvane
