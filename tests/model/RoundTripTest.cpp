#include "src/model/mapping/NotKept.h"
#include "tests/model/ModelFixture.h"
#include "tests/model/RecordFilling.h"

#include <norvane/model/mapping/EnvelopeMapping.h>
#include <norvane/store/NVMCDEnvelopes.h>

#include <set>

namespace norvane {
namespace {

using RoundTrip = ModelFixture;

std::shared_ptr<NVMEnvelopeDefinition> throughTheStore(const NVMEnvelopeDefinition& envelope) {
    NVMCDEnvelopeDefinition stored;
    nvm_mapToNVMCDEnvelope(envelope, stored);
    return std::make_shared<NVMEnvelopeDefinition>(stored, true);
}

bool isNotKept(const RecordType& type, const Field& field) {
    return findNotKept(type, field.name) != nullptr;
}

TEST_F(RoundTrip, TheStoreKeepsAllButTheFieldsOfOneTable) {
    std::set<const NotKept*> needed;
    for (const bool turnIsKnown : {true, false}) {
        NVMEnvelopeDefinition envelope;
        RecordFiller().fill(NVMEnvelopeDefinition::type(), &envelope);
        if (!turnIsKnown) envelope.currentRoutingOrder = 0;
        const auto read = throughTheStore(envelope);
        EXPECT_EQ(differences(envelope, *read, &isNotKept), std::vector<std::string>{});
        for (const NotKept& row : fieldsNotKept()) {
            const auto isOfOtherRow = [&](const RecordType& type, const Field& field) {
                const NotKept* found = findNotKept(type, field.name);
                return found && found != &row;
            };
            if (!differences(envelope, *read, isOfOtherRow).empty()) needed.insert(&row);
        }
        const auto& group = read->recipients->signers->front()->tabs->radioGroupTabs->front();
        EXPECT_EQ(group->radios->front()->radioGroup.lock(), group);
        EXPECT_EQ(read->envelopeTemplateDefinition->templateId,
                  envelope.envelopeTemplateDefinition->templateId);
    }
    for (const NotKept& row : fieldsNotKept())
        EXPECT_TRUE(needed.contains(&row)) << row.record().name() << "." << row.field << " is kept after all";
}

TEST_F(RoundTrip, WhoseTurnItIsStandsOnce) {
    NVMEnvelopeDefinition envelope;
    envelope.recipients = std::make_shared<NVMRecipients>();
    EXPECT_EQ(throughTheStore(envelope)->recipients->currentRoutingOrder, std::nullopt);
    envelope.recipients->currentRoutingOrder = 3;
    EXPECT_EQ(throughTheStore(envelope)->currentRoutingOrder, 3);
    envelope.currentRoutingOrder = 2;
    EXPECT_EQ(throughTheStore(envelope)->currentRoutingOrder, 2);
    EXPECT_EQ(throughTheStore(envelope)->recipients->currentRoutingOrder, 2);
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
