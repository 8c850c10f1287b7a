#include "tests/model/ModelFixture.h"
#include "tests/model/RecordFilling.h"

#include <norvane/model/mapping/EnvelopeMapping.h>
#include <norvane/store/NVMCDEnvelopes.h>

namespace norvane {
namespace {

using RoundTrip = ModelFixture;

/// What belongs together in a record is made to.
void settle(NVMTabs& tabs) {
    for (const auto& tab : tabs.allTabs()) {
        if (auto* radio = dynamic_cast<NVMRadio*>(tab.get())) {
            radio->tabType = NVMTabTypeRadio;
            radio->xPosition = radio->frame->originX;
            radio->yPosition = radio->frame->originY;
        }
        if (auto* formula = dynamic_cast<NVMFormula*>(tab.get())) {
            formula->xPosition = std::to_string(formula->frame->originX);
            formula->yPosition = std::to_string(formula->frame->originY);
            formula->width = static_cast<double>(formula->frame->width);
        }
        if (auto* image = dynamic_cast<NVMImageTabProtocol*>(tab.get())) image->scaleValue = 1;
    }
}

std::shared_ptr<NVMEnvelopeDefinition> filledEnvelope() {
    auto envelope = std::make_shared<NVMEnvelopeDefinition>();
    RecordFiller().fill(NVMEnvelopeDefinition::type(), envelope.get());
    envelope->disclosureSetting = 1;
    for (const auto& recipient : envelope->recipients->allRecipients())
        if (const auto tabs = recipient->signerTabs()) settle(*tabs);
    return envelope;
}

std::shared_ptr<NVMEnvelopeDefinition> throughTheStore(const NVMEnvelopeDefinition& envelope) {
    NVMCDEnvelopeDefinition stored;
    nvm_mapToNVMCDEnvelope(envelope, stored);
    return std::make_shared<NVMEnvelopeDefinition>(stored, true);
}

/// Everything but the numbers of kinds: a filled record has arbitrary ones, the store gives back the list's.
std::vector<std::string> lostFields(const NVMEnvelopeDefinition& before, const NVMEnvelopeDefinition& after) {
    auto lost = differences(before, after);
    std::erase_if(lost, [](const std::string& name) {
        return name.ends_with(".tabType") || name.ends_with(".recipientType");
    });
    return lost;
}

TEST_F(RoundTrip, TheStoreKeepsEveryFieldButTheseOfTheEnvelope) {
    const auto envelope = filledEnvelope();
    const auto read = throughTheStore(*envelope);
    EXPECT_EQ(lostFields(*envelope, *read), (std::vector<std::string>{
                                                "envelopeTemplateDefinition.name",
                                                "envelopeTemplateDefinition.password",
                                                "envelopeTemplateDefinition.varNewPassword",
                                                "envelopeTemplateDefinition.templateDescription",
                                                "envelopeTemplateDefinition.uri",
                                                "envelopeTemplateDefinition.folderName",
                                                "envelopeTemplateDefinition.folderId",
                                                "envelopeTemplateDefinition.folderUri",
                                                "envelopeTemplateDefinition.parentFolderUri",
                                                "envelopeTemplateDefinition.shared",
                                                "envelopeTemplateDefinition.lastModified",
                                                "envelopeTemplateDefinition.pageCount",
                                                "envelopeTemplateDefinition.lastModifiedBy",
                                                "envelopeTemplateDefinition.owner",
                                                "documents.pdf", // the bytes are a file
                                                "combinedDocument",
                                                "autoNavigation",
                                                "isSignatureProviderEnvelope",
                                                "cachedDateTime",
                                                "currentRoutingOrder",
                                            }));
    EXPECT_TRUE(lostFields(*read, *throughTheStore(*read)).empty());
    const auto& group = read->recipients->signers->front()->tabs->radioGroupTabs->front();
    EXPECT_EQ(group->radios->front()->radioGroup.lock(), group);
}

TEST_F(RoundTrip, KindsComeFromTheListsAndTypeZeroStays) {
    const auto signer = std::make_shared<NVMSigner>();
    signer->tabs = std::make_shared<NVMTabs>();
    signer->tabs->addTab(std::make_shared<NVMTitle>());
    signer->tabs->titleTabs->front()->tabType = NVMTabTypeUnsupported;
    signer->tabs->addTab(std::make_shared<NVMCompany>());
    NVMCDRecipient stored;
    nvm_mapToNvmcdRecipient(*signer, stored);
    EXPECT_EQ(stored.recipientType, NVMRecipientTypeSigner);
    EXPECT_EQ(stored.tabs->companyTabs->front()->type_, NVMTabTypeCompany);
    const NVMSigner read(stored);
    EXPECT_EQ(NVMTabs::unsupportedTabTypes(read.tabs.get()), std::vector<std::string>{"Title"});
    EXPECT_EQ(read.tabs->companyTabs->front()->tabType, NVMTabTypeCompany);
    EXPECT_EQ(read.tabs->signHereTabs, std::nullopt);
}

TEST_F(RoundTrip, ATabStoredAsAnotherKindKeepsNothingOfTheOld) {
    NVMText text;
    RecordFiller().fill(NVMText::type(), &text);
    NVMCDTab stored;
    nvm_mapNvmcdTab(stored, text);
    stored.objectID = {"NVMCDTab", 5};
    EXPECT_TRUE(stored.font && stored.formula && stored.maxLength);
    NVMSignHere sign;
    sign.tabId = "7";
    nvm_mapNvmcdTab(stored, sign);
    EXPECT_EQ(stored.objectID.row, 5);
    EXPECT_FALSE(stored.font || stored.formula || stored.maxLength || stored.bold || stored.locked);
    EXPECT_EQ(stored.required, 1);
    EXPECT_EQ(stored.optional, 0);
    EXPECT_EQ(stored.selected, 0);
}

TEST_F(RoundTrip, UpdatingKeepsTheStoredDocumentsAndTheBookkeeping) {
    NVMCDEnvelopeDefinition stored;
    stored.syncPending = 1;
    stored.templateId = "template";
    auto document = stored.documents.emplace().emplace_back(std::make_shared<NVMCDDocument>());
    document->objectID = {"NVMCDDocument", 3};
    document->documentId = "1";
    document->sandboxFilePath = "/userId/ed/a.pdf";
    document->_sha256 = "digest";
    NVMEnvelopeDefinition envelope(stored, true);
    envelope.documents->front()->name = "Lease.pdf";
    nvm_mapToNVMCDEnvelope(envelope, stored);
    ASSERT_EQ(stored.documents->size(), 1u);
    EXPECT_EQ(stored.documents->front(), document);
    EXPECT_EQ(document->name, "Lease.pdf");
    EXPECT_EQ(document->_sha256, "digest");
    EXPECT_EQ(stored.syncPending, 1);
    EXPECT_EQ(stored.templateId, "template");

    envelope.documents->front()->sandboxFilePath = "/userId/ed/b.pdf";
    nvm_mapToNVMCDEnvelope(envelope, stored);
    EXPECT_EQ(document->_sha256, std::nullopt);
    nvm_mapToNVMCDEnvelope(NVMEnvelopeDefinition(stored, false), stored);
    EXPECT_EQ(stored.documents->size(), 1u) << "a record without documents was never asked for them";
}

} // namespace
} // namespace norvane
