#include "src/model/RecordConversion.h"
#include "src/model/mapping/ImageTabFrame.h"

#include <norvane/model/mapping/EnvelopeMapping.h>
#include <norvane/store/NVMCDEnvelopes.h>

#include <algorithm>

namespace norvane {
namespace {

const RecordConversion& domainToStore();

template <class To, class From>
std::shared_ptr<To> stored(const std::shared_ptr<From>& record) {
    return record ? domainToStore().make<To>(*record) : nullptr;
}

/// For a tab of any kind: all of them begin as an NVMTab.
void finishTab(const NVMTab& tab, NVMCDTab& cdTab) {
    cdTab.type_ = static_cast<double>(tab.tabType);
    cdTab.frameEntity = stored<NVMCDFrame>(tab.frame);
    if (!cdTab.required) cdTab.required = 0;
    if (!cdTab.selected) cdTab.selected = 0;
}

void finishImageTab(const NVMImageTabProtocol& tab, NVMCDTab& cdTab) {
    finishTab(tab, cdTab);
    cdTab.required = tab.nvm_required() ? 1 : 0;
}

void finishRecipient(const NVMRecipient& recipient, NVMCDRecipient& cdRecipient) {
    cdRecipient._signature = stored<NVMCDSignature>(recipient.signature);
}

void finishOfflineAttributes(const NVMOfflineAttributes& attributes, NVMCDOfflineAttributes& cdAttributes) {
    cdAttributes._consumerDisclosureId = attributes.consumerDisclosureId;
}

void finishDocument(const NVMDocument& document, NVMCDDocument& cdDocument) {
    cdDocument.filePath = document.sandboxFilePath;
}

/// The stored document of that identifier that no other document took, or a new one.
std::shared_ptr<NVMCDDocument> documentFor(const NVMDocument& document,
                                           const field::List<NVMCDDocument>& known,
                                           const std::vector<std::shared_ptr<NVMCDDocument>>& taken) {
    if (!known || !document.documentId) return std::make_shared<NVMCDDocument>();
    for (const auto& candidate : *known)
        if (candidate->documentId == document.documentId &&
            std::find(taken.begin(), taken.end(), candidate) == taken.end())
            return candidate;
    return std::make_shared<NVMCDDocument>();
}

void mapDocuments(const NVMEnvelopeTemplate& envelope, NVMCDEnvelopeDefinition& cdEnvelope) {
    // Absent documents were never read from the store: they are not to be removed from it.
    if (!envelope.documents) return;
    field::List<NVMCDDocument> documents;
    documents.emplace();
    for (const auto& document : *envelope.documents) {
        auto cdDocument = documentFor(*document, cdEnvelope.documents, *documents);
        nvm_mapToNvmcdDocument(*document, *cdDocument);
        documents->push_back(std::move(cdDocument));
    }
    cdEnvelope.documents = std::move(documents);
}

/// Whose turn it is stands once, with the recipients.
void keepTurn(std::int64_t order, NVMCDRecipients& cdRecipients) {
    if (order != 0 && order != wholePoints(cdRecipients.currentRoutingOrder))
        cdRecipients.currentRoutingOrder = static_cast<double>(order);
}

void finishEnvelope(const NVMEnvelopeTemplate& envelope, NVMCDEnvelopeDefinition& cdEnvelope) {
    mapDocuments(envelope, cdEnvelope);
    cdEnvelope.useDisclosure = static_cast<double>(envelope.disclosureSetting);
    cdEnvelope.syncPendingUploadRetryCount = static_cast<double>(envelope.failedAttemptsToSync);
    if (envelope.envelopeTemplateDefinition)
        cdEnvelope.templateId = envelope.envelopeTemplateDefinition->templateId;
    if (cdEnvelope.recipients) keepTurn(envelope.currentRoutingOrder, *cdEnvelope.recipients);
}

constexpr std::string_view kEnvelopeExceptions[] = {"documents"};

constexpr ConversionRule kRules[] = {
    {&NVMSignHere::type, &NVMCDTab::type, {}, {}, &Then<finishImageTab>::apply},
    {&NVMInitialHere::type, &NVMCDTab::type, {}, {}, &Then<finishImageTab>::apply},
    {nullptr, &NVMCDTab::type, {}, {}, &Then<finishTab>::apply},
    {nullptr, &NVMCDRecipient::type, {}, {}, &Then<finishRecipient>::apply},
    {&NVMOfflineAttributes::type,
     &NVMCDOfflineAttributes::type,
     {},
     {},
     &Then<finishOfflineAttributes>::apply},
    {&NVMDocument::type, &NVMCDDocument::type, {}, {}, &Then<finishDocument>::apply},
    {nullptr, &NVMCDEnvelopeDefinition::type, {}, kEnvelopeExceptions, &Then<finishEnvelope>::apply},
};

const RecordConversion& domainToStore() {
    static constexpr RecordConversion conversion(kRules);
    return conversion;
}

} // namespace

void nvm_mapToNVMCDEnvelope(const NVMEnvelopeTemplate& envelope, NVMCDEnvelopeDefinition& cdEnvelope) {
    domainToStore().apply(envelope, cdEnvelope);
}

void nvm_mapToNvmcdDocument(const NVMDocument& document, NVMCDDocument& cdDocument) {
    // Other bytes have another digest; it is taken anew when the row is saved.
    if (cdDocument.sandboxFilePath != document.sandboxFilePath) cdDocument._sha256.reset();
    domainToStore().apply(document, cdDocument);
}

void nvm_mapToNvmcdRecipient(const NVMRecipient& recipient, NVMCDRecipient& cdRecipient) {
    domainToStore().apply(recipient.recordType(), &recipient, NVMCDRecipient::type(), &cdRecipient);
}

void nvm_mapNvmcdTab(NVMCDTab& cdTab, const NVMTab& fromNVMTab) {
    NVMCDTab fresh;
    fresh.objectID = cdTab.objectID;
    domainToStore().apply(fromNVMTab.recordType(), &fromNVMTab, NVMCDTab::type(), &fresh);
    cdTab = std::move(fresh);
}

std::shared_ptr<NVMCDTabs> nvmcdTabsFromNVMTabs(const NVMTabs& tabs) {
    return domainToStore().make<NVMCDTabs>(tabs);
}

} // namespace norvane
