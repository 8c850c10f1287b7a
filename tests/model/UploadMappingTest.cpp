#include "tests/model/ModelFixture.h"

#include <norvane/api/NVESEnvelopes.h>
#include <norvane/model/mapping/EnvelopeMapping.h>
#include <norvane/platform/Base64.h>
#include <norvane/store/NVMCDEnvelopes.h>

namespace norvane {
namespace {

class UploadMapping : public ModelFixture {
  protected:
    std::shared_ptr<NVMCDRecipient> signer_ = std::make_shared<NVMCDRecipient>();
    NVMCDEnvelopeDefinition stored_;

    void SetUp() override {
        KitFixture::SetUp();
        signer_->recipientType = NVMRecipientTypeSigner;
        signer_->tabs = std::make_shared<NVMCDTabs>();
        stored_.recipients = std::make_shared<NVMCDRecipients>();
        stored_.recipients->signers.emplace().push_back(signer_);
    }
    std::shared_ptr<NVMCDTab> tabAt(NVMTabType type, double y) {
        auto tab = std::make_shared<NVMCDTab>();
        tab->type_ = static_cast<double>(type);
        tab->frameEntity = std::make_shared<NVMCDFrame>();
        tab->frameEntity->originX = 10;
        tab->frameEntity->originY = y;
        return tab;
    }
    std::shared_ptr<NVESEnvelopeDefinition> request() const {
        return createEnvelopeRequestForEnvelope(stored_);
    }
    std::shared_ptr<NVESSigner> signerOf(const NVESEnvelopeDefinition& envelope) const {
        return envelope.recipients->signers->front();
    }
};

TEST_F(UploadMapping, SwitchesAreAlwaysWrittenAndIdentityNever) {
    stored_.envelopeId = "id";
    stored_.emailBlurb = "blurb";
    stored_.transactionId = "transaction";
    stored_.allowReassign = 1;
    stored_.disableResponsiveDocument = 1;
    stored_.sentDateTime = Date();
    stored_.notification = std::make_shared<NVMCDNotification>();
    stored_.notification->reminders = std::make_shared<NVMCDReminders>();
    stored_.notification->reminders->reminderDelay = 3;
    const auto envelope = request();
    EXPECT_EQ(envelope->status, "sent");
    EXPECT_EQ(envelope->allowMarkup, "false");
    EXPECT_EQ(envelope->allowReassign, "true");
    EXPECT_EQ(envelope->useDisclosure, "false");
    EXPECT_EQ(envelope->DisableResponsiveDocument, "true");
    EXPECT_EQ(envelope->transactionId, "transaction");
    EXPECT_EQ(envelope->notification->useAccountDefaults, "false");
    EXPECT_EQ(envelope->notification->reminders->reminderDelay, "3");
    EXPECT_FALSE(envelope->envelopeId || envelope->emailBlurb || envelope->sentDateTime ||
                 envelope->asynchronous);
}

TEST_F(UploadMapping, DocumentsNameTheirFile) {
    for (const char* id : {"2", "1"}) {
        if (!stored_.documents) stored_.documents.emplace();
        stored_.documents->push_back(std::make_shared<NVMCDDocument>());
        stored_.documents->back()->documentId = id;
        stored_.documents->back()->sandboxFilePath = std::string("/userId/ed/") + id + ".pdf";
    }
    stored_.documents->back()->sandboxFilePath = "../outside.pdf";
    const auto envelope = request();
    ASSERT_EQ(envelope->documents->size(), 2u);
    const auto& first = *envelope->documents->front();
    EXPECT_EQ(first.documentId, "2");
    EXPECT_EQ(first.includeInDownload, "false");
    const auto url = Url::parse(first.fileSandboxURL.text.value_or(""));
    ASSERT_TRUE(url);
    EXPECT_TRUE(url->filePath().ends_with("/userId/ed/2.pdf")) << url->filePath();
    EXPECT_TRUE(url->filePath().starts_with(home_.path().string()));
    EXPECT_EQ(envelope->documents->back()->fileSandboxURL.text, std::nullopt);
}

TEST_F(UploadMapping, SignersGetWhatOfflineSigningNeeds) {
    signer_->routingOrder = 2;
    signer_->roleName = "Client";
    signer_->customFields = {"secret"};
    signer_->deliveryMethod = "offline";
    signer_->signedDateTime = Date(std::chrono::milliseconds(1'700'000'000'123));
    signer_->offlineAttributes = std::make_shared<NVMCDOfflineAttributes>();
    signer_->offlineAttributes->gpsLatitude = -33.25;
    const auto signer = signerOf(*request());
    EXPECT_EQ(signer->canSignOffline, "true");
    EXPECT_EQ(signer->routingOrder, "2");
    EXPECT_EQ(signer->signedDateTime, "2023-11-14T22:13:20.123Z");
    EXPECT_EQ(signer->offlineAttributes->gpsLatitude, "-33.25");
    EXPECT_EQ(signer->inheritEmailNotificationConfiguration, "false");
    EXPECT_FALSE(signer->customFields || signer->roleName);
    EXPECT_TRUE(signer->tabs);
    ASSERT_TRUE(signer->clientUserId);
    EXPECT_NE(signer->clientUserId, signerOf(*request())->clientUserId) << "fresh each time";
    signer_->clientUserId = "mine";
    EXPECT_EQ(signerOf(*request())->clientUserId, "mine");
}

TEST_F(UploadMapping, TypesChooseTheListsAndUnknownOnesAreLeftOut) {
    for (const double type : {0.0, 1.0, 6.0}) {
        stored_.recipients->signers->push_back(std::make_shared<NVMCDRecipient>());
        stored_.recipients->signers->back()->recipientType = type;
    }
    signer_->tabs->textTabs = {tabAt(NVMTabTypeUnsupported, 1), tabAt(NVMTabTypeCompany, 1)};
    const auto recipients = request()->recipients;
    EXPECT_EQ(recipients->signers->size(), 1u);
    EXPECT_EQ(recipients->agents->size(), 1u);
    EXPECT_EQ(recipients->inPersonSigners->size(), 1u);
    EXPECT_FALSE(recipients->editors.has_value());
    const auto& tabs = *recipients->signers->front()->tabs;
    EXPECT_FALSE(tabs.textTabs.has_value());
    EXPECT_EQ(tabs.companyTabs->size(), 1u);
}

TEST_F(UploadMapping, ImagesStandHigherThanOtherTabs) {
    signer_->tabs->signHereTabs = {tabAt(NVMTabTypeSignHere, 100), tabAt(NVMTabTypeSignHere, 100.1)};
    signer_->tabs->initialHereTabs = {tabAt(NVMTabTypeInitialHere, 100)};
    signer_->tabs->textTabs = {tabAt(NVMTabTypeText, 100)};
    const std::string image(100, '\x5a');
    auto& sign = *signer_->tabs->signHereTabs->front();
    sign.imageData = std::make_shared<NVMCDTabImageData>();
    sign.imageData->data = Data(image);
    auto& text = *signer_->tabs->textTabs->front();
    text.frameEntity->width = 84;
    text.frameEntity->height = 0;
    text.required = 1;
    text.maxLength = 40;
    text.originalValue = "before";
    text.pageNumber = 3;
    const auto signer = signerOf(*request());
    const auto& tabs = *signer->tabs;
    EXPECT_EQ(tabs.signHereTabs->front()->yPosition, "79");
    EXPECT_EQ(tabs.signHereTabs->back()->yPosition, "79.1") << "single precision, shortest text";
    EXPECT_EQ(tabs.initialHereTabs->front()->yPosition, "84");
    EXPECT_EQ(tabs.signHereTabs->front()->optional, "false");
    const std::string encoded = tabs.signHereTabs->front()->imageDataBase64.value_or("");
    EXPECT_EQ(encoded.find("\r\n"), 64u);
    EXPECT_EQ(decodeBase64(encoded).view(), image);
    const auto& sent = *tabs.textTabs->front();
    EXPECT_EQ(sent.yPosition, "100");
    EXPECT_EQ(sent.xPosition, "10");
    EXPECT_EQ(sent.pageNumber, "3");
    EXPECT_EQ(sent.width, 84);
    EXPECT_EQ(sent.height, std::nullopt);
    EXPECT_EQ(sent.required, "true");
    EXPECT_EQ(sent.bold, "false");
    EXPECT_EQ(sent.maxLength, 40);
    EXPECT_FALSE(sent.originalValue || sent.templateLocked);
}

TEST_F(UploadMapping, RadioGroupsSendTheirRadios) {
    auto group = signer_->tabs->radioGroupTabs.emplace().emplace_back(std::make_shared<NVMCDRadioGroup>());
    group->groupName = "Size";
    group->shared = 1;
    group->radios = {tabAt(NVMTabTypeRadio, 50)};
    group->radios->front()->selected = 1;
    group->radios->front()->value = "X";
    const auto signer = signerOf(*request());
    const auto& sent = *signer->tabs->radioGroupTabs->front();
    EXPECT_EQ(sent.groupName, "Size");
    EXPECT_EQ(sent.shared, std::nullopt);
    EXPECT_EQ(sent.radios->front()->selected, "true");
    EXPECT_EQ(sent.radios->front()->yPosition, "50");
}

} // namespace
} // namespace norvane
