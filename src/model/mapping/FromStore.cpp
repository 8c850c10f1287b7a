#include "src/model/mapping/StoreToDomain.h"

#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/store/DocumentFiles.h>
#include <norvane/store/NVMCDEnvelopes.h>
#include <norvane/store/NVMCDTemplates.h>

// The domain records' constructors from stored ones.

namespace norvane {

#define NORVANE_FROM_STORE(RECORD, STORED)                                                                   \
    RECORD::RECORD(const STORED& stored)                                                                     \
        : RECORD() {                                                                                         \
        storeToDomain().apply(stored, *this);                                                                \
    }

NORVANE_FROM_STORE(NVMAgent, NVMCDRecipient)
NORVANE_FROM_STORE(NVMAttachment, NVMCDAttachment)
NORVANE_FROM_STORE(NVMBCCEmailAddress, NVMCDBCCEmailAddress)
NORVANE_FROM_STORE(NVMCarbonCopy, NVMCDRecipient)
NORVANE_FROM_STORE(NVMCertifiedDelivery, NVMCDRecipient)
NORVANE_FROM_STORE(NVMCheckbox, NVMCDTab)
NORVANE_FROM_STORE(NVMCompany, NVMCDTab)
NORVANE_FROM_STORE(NVMCustomFields, NVMCDCustomFields)
NORVANE_FROM_STORE(NVMDateSigned, NVMCDTab)
NORVANE_FROM_STORE(NVMEditor, NVMCDRecipient)
NORVANE_FROM_STORE(NVMEmailSettings, NVMCDEmailSettings)
NORVANE_FROM_STORE(NVMEnvelopeTemplateDefinition, NVMCDEnvelopeTemplateDefinition)
NORVANE_FROM_STORE(NVMExpirations, NVMCDExpirations)
NORVANE_FROM_STORE(NVMFormula, NVMCDTab)
NORVANE_FROM_STORE(NVMFullName, NVMCDTab)
NORVANE_FROM_STORE(NVMInPersonSigner, NVMCDRecipient)
NORVANE_FROM_STORE(NVMInitialHere, NVMCDTab)
NORVANE_FROM_STORE(NVMIntermediary, NVMCDRecipient)
NORVANE_FROM_STORE(NVMListCustomField, NVMCDListCustomField)
NORVANE_FROM_STORE(NVMMergeField, NVMCDMergeField)
NORVANE_FROM_STORE(NVMNameValue, NVMCDNameValue)
NORVANE_FROM_STORE(NVMNotification, NVMCDNotification)
NORVANE_FROM_STORE(NVMOfflineAttributes, NVMCDOfflineAttributes)
NORVANE_FROM_STORE(NVMRadio, NVMCDTab)
NORVANE_FROM_STORE(NVMRadioGroup, NVMCDRadioGroup)
NORVANE_FROM_STORE(NVMRecipient, NVMCDRecipient)
NORVANE_FROM_STORE(NVMRecipientEmailNotification, NVMCDRecipientEmailNotification)
NORVANE_FROM_STORE(NVMRecipientSignatureInformation, NVMCDRecipientSignatureInformation)
NORVANE_FROM_STORE(NVMRecipients, NVMCDRecipients)
NORVANE_FROM_STORE(NVMReminders, NVMCDReminders)
NORVANE_FROM_STORE(NVMSignHere, NVMCDTab)
NORVANE_FROM_STORE(NVMSignature, NVMCDSignature)
NORVANE_FROM_STORE(NVMSigner, NVMCDRecipient)
NORVANE_FROM_STORE(NVMTab, NVMCDTab)
NORVANE_FROM_STORE(NVMTabFrame, NVMCDFrame)
NORVANE_FROM_STORE(NVMTabImageData, NVMCDTabImageData)
NORVANE_FROM_STORE(NVMTabs, NVMCDTabs)
NORVANE_FROM_STORE(NVMText, NVMCDTab)
NORVANE_FROM_STORE(NVMTextCustomField, NVMCDTextCustomField)
NORVANE_FROM_STORE(NVMTitle, NVMCDTab)
#undef NORVANE_FROM_STORE

namespace {

field::Bytes bytesOf(const NVMCDDocument& stored) {
    if (!stored.sandboxFilePath) return std::nullopt;
    auto bytes = NVM_verifiedDataWithPath(*stored.sandboxFilePath, stored._sha256, stored.name.value_or(""));
    if (!bytes) return std::nullopt;
    return *std::move(bytes);
}

void readPdfs(const field::List<NVMCDDocument>& stored, const field::List<NVMDocument>& documents) {
    if (!stored || !documents) return;
    for (std::size_t index = 0; index < stored->size(); ++index)
        (*documents)[index]->pdf = bytesOf(*(*stored)[index]);
}

} // namespace

NVMDocument::NVMDocument(const NVMCDDocument& stored, bool includePdf) {
    storeToDomain().apply(stored, *this);
    if (includePdf) pdf = bytesOf(stored);
}

NVMEnvelopeTemplate::NVMEnvelopeTemplate(const NVMCDEnvelopeTemplate& stored, bool includePdfs) {
    storeToDomain().apply(stored, *this);
    if (!includePdfs) return;
    readPdfs(stored.documents, documents);
    if (combinedDocument) combinedDocument->pdf = bytesOf(*stored.combinedDocument);
}

NVMEnvelopeDefinition::NVMEnvelopeDefinition(const NVMCDEnvelopeTemplate& stored, bool includePdfs)
    : NVMEnvelopeTemplate(stored, includePdfs) {}

NVMEnvelopeDefinition::NVMEnvelopeDefinition(const NVMCDEnvelopeDefinition& stored, bool withDocuments) {
    storeToDomain().apply(stored, *this);
    if (withDocuments)
        readPdfs(stored.documents, documents);
    else
        documents.reset();
}

} // namespace norvane
