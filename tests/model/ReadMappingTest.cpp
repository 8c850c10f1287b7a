#include "tests/model/ModelFixture.h"

#include <norvane/api/NVESTemplates.h>
#include <norvane/model/mapping/EnvelopeMapping.h>
#include <norvane/store/DocumentFiles.h>
#include <norvane/store/NVMCDEnvelopes.h>
#include <norvane/store/NVMCDTemplates.h>

namespace norvane {
namespace {

using ReadMapping = ModelFixture;

NVMCDTab imageTab(const std::optional<std::string>& scale, std::optional<double> width,
                  std::optional<double> height) {
    NVMCDTab tab;
    tab.scaleValue = scale;
    tab.frameEntity = std::make_shared<NVMCDFrame>();
    tab.frameEntity->width = width;
    tab.frameEntity->height = height;
    return tab;
}

TEST_F(ReadMapping, ImageTabsAreScaled) {
    struct Case {
        std::optional<std::string> scale;
        std::optional<double> width, height;
        Rect expected;
    };
    const Case cases[] = {
        {{}, 60, 30, {0, 0, 60, 30}},
        {{}, {}, {}, {0, 0, 53, 45}},
        {"0.5", {}, {}, {0, 0, 26, 22}},
        {"1.5", 100, {}, {0, 0, 150, 67}},
        {"0.001", 60, 30, {0, 0, 60, 30}},
        {"nonsense", 60, 30, {0, 0, 60, 30}},
        {"1,000", 2, 1e300, {0, 0, 2000, 1e12}},
    };
    for (const Case& each : cases)
        EXPECT_EQ(NVMSignHere(imageTab(each.scale, each.width, each.height)).frameAsCGRect(), each.expected)
            << each.scale.value_or("none");
    EXPECT_EQ(NVMInitialHere(imageTab("2", {}, {})).frameAsCGRect(), (Rect{0, 0, 72, 100}));
}

TEST_F(ReadMapping, StoredTextsBecomeNumbers) {
    NVMCDTab stored;
    stored.anchorXOffset = "-12";
    stored.anchorYOffset = "twelve";
    stored.tabOrder = 2.5;
    stored.locked = 1;
    const NVMText text(stored);
    EXPECT_EQ(text.anchorXOffset, -12);
    EXPECT_EQ(text.anchorYOffset, std::nullopt);
    EXPECT_EQ(text.tabOrder, 2.5);
    stored.anchorYOffset = "-7.5";
    EXPECT_EQ(NVMText(stored).anchorYOffset, -7) << "a whole number";
    EXPECT_TRUE(text.locked);
    EXPECT_EQ(text.frame, nullptr);
    EXPECT_EQ(text.tabType, NVMTabTypeText);
}

TEST_F(ReadMapping, WireRecipientsBecomeRecords) {
    NVESRecipients wire;
    wire.currentRoutingOrder = "2";
    auto signer = wire.signers.emplace().emplace_back(std::make_shared<NVESSigner>());
    signer->routingOrder = "2";
    signer->totalTabCount = "many";
    signer->signedDateTime = "2024-02-29T23:59:59.1234567Z";
    signer->sentDateTime = "yesterday";
    signer->requireSignOnPaper = " Yes";
    signer->canSignOffline = "false";
    signer->signingGroupUsers.emplace().emplace_back(std::make_shared<NVESUserInfo>())->userId = "u7";
    signer->tabs = std::make_shared<NVESTabs>();
    auto text = signer->tabs->textTabs.emplace().emplace_back(std::make_shared<NVESText>());
    text->xPosition = "72";
    text->yPosition = "144.9";
    text->width = 200;
    text->required = "true";
    auto group = signer->tabs->radioGroupTabs.emplace().emplace_back(std::make_shared<NVESRadioGroup>());
    group->documentId = "4";
    group->radios.emplace().push_back(std::make_shared<NVESRadio>());

    const NVMRecipients recipients(wire);
    EXPECT_EQ(recipients.currentRoutingOrder, 2);
    EXPECT_FALSE(recipients.agents.has_value());
    const NVMSigner& read = *recipients.signers->front();
    EXPECT_EQ(read.recipientType, NVMRecipientTypeSigner);
    EXPECT_EQ(read.routingOrder, 2);
    EXPECT_EQ(read.totalTabCount, std::nullopt);
    EXPECT_EQ(read.signedDateTime, Date(std::chrono::milliseconds(1'709'251'199'123)));
    EXPECT_EQ(read.sentDateTime, std::nullopt);
    EXPECT_TRUE(read.requireSignOnPaper);
    EXPECT_FALSE(read.canSignOffline);
    EXPECT_TRUE(read.matchesUserWithUserID("u7"));
    EXPECT_EQ(read.tabs->textTabs->front()->frameAsCGRect(), (Rect{72, 144, 200, 0}));
    EXPECT_TRUE(read.tabs->textTabs->front()->required);
    EXPECT_EQ(read.tabs->radioGroupTabs->front()->radios->front()->documentId, "4");
}

TEST_F(ReadMapping, StoredTemplatesBecomeEnvelopesWithTheirBytesOnlyWhenAsked) {
    NVMCDEnvelopeTemplate stored;
    stored.useDisclosure = "true";
    stored.envelopeTemplateDefinition = std::make_shared<NVMCDEnvelopeTemplateDefinition>();
    stored.envelopeTemplateDefinition->templateDescription = "Lease";
    stored.documents.emplace().push_back(std::make_shared<NVMCDDocument>());
    stored.documents->front()->name = "lease.pdf";
    stored.documents->front()->sandboxFilePath = "/userId/td/missing.pdf";
    const NVMEnvelopeDefinition envelope(stored, true);
    EXPECT_EQ(envelope.disclosureSetting, 1);
    EXPECT_EQ(envelope.envelopeTemplateDefinition->templateDescription, "Lease");
    EXPECT_EQ(envelope.documents->front()->pdf, std::nullopt);

    const auto file = *NVM_documentsPathByAppendingPathComponent("/userId/td/missing.pdf");
    for (const auto& folder : {file.parent_path().parent_path(), file.parent_path()})
        ASSERT_EQ(platform().files->createFolder(folder), std::nullopt);
    ASSERT_EQ(platform().files->write(file, Data("%PDF-1.7")), std::nullopt);
    EXPECT_EQ(NVMEnvelopeDefinition(stored, true).documents->front()->pdf, Data("%PDF-1.7"));
    EXPECT_EQ(NVMEnvelopeDefinition(stored, false).documents->front()->pdf, std::nullopt);
}

TEST_F(ReadMapping, StoredEnvelopesAnswerTheQueriesOfDomainOnes) {
    signIn();
    const auto hosted = inPersonSigner("1", 1);
    const auto mine = signer("2", "José", "jose@example.com", 2);
    const auto envelope = envelopeOf({hosted, mine});
    envelope->currentRoutingOrder = 1;
    envelope->envelopeId = "remote";
    envelope->status = "sent";
    envelope->documents.emplace().push_back(std::make_shared<NVMDocument>());
    envelope->documents->front()->name = "lease.pdf";
    mine->tabs->textTabs.emplace().push_back(tab<NVMText>("City", *mine));
    NVMCDEnvelopeDefinition stored;
    nvm_mapToNVMCDEnvelope(*envelope, stored);

    const NVMEnvelopeHelperProtocol& asked = stored;
    const std::vector<std::string> everyone = {"1", "2"};
    EXPECT_FALSE(asked.isAvailableRemotely()) << "what is stored counts as made here";
    EXPECT_EQ(idsOf(asked.incompleteLocalSigners()), everyone) << "made here: every order";
    stored.setIsCreatedFromTemplate(true);
    EXPECT_EQ(idsOf(asked.incompleteLocalSigners()), std::vector<std::string>{"1"});
    EXPECT_EQ(idsOf(asked.unsignedRecipients()->allSigners()), std::vector<std::string>{"1"});
    EXPECT_FALSE(asked.isRemoteEnvelopeSignedByAtLeastOneSignerInCurrentSession());
    stored.setIsRemoteEnvelopeSignedByAtLeastOneSignerInCurrentSession(true);
    EXPECT_TRUE(asked.isRemoteEnvelopeSignedByAtLeastOneSignerInCurrentSession()) << "as it was stored";
    EXPECT_EQ(asked.tagsForSigner(asked.recipientWithId("2"))->front()->tabLabel, "City");
    EXPECT_EQ(asked.allDocuments().front()->name, "lease.pdf");
    stored.setSubjectIfNeeded();
    EXPECT_EQ(stored.emailSubject, "lease.pdf");
}

} // namespace
} // namespace norvane
