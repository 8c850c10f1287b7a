#include "src/model/RecordConversion.h"
#include "src/model/mapping/TabsToWire.h"

#include <norvane/api/NVESEnvelopes.h>
#include <norvane/model/mapping/EnvelopeMapping.h>
#include <norvane/platform/Platform.h>
#include <norvane/platform/Url.h>
#include <norvane/store/DocumentFiles.h>
#include <norvane/store/NVMCDEnvelopes.h>

namespace norvane {
namespace {

const RecordConversion& storeToWire();

constexpr std::string_view kEnvelopeFields[] = {
    "allowMarkup",        "allowReassign", "authoritativeCopy",
    "brandLock",          "enableWetSign", "enforceSignerVisibility",
    "envelopeIdStamping", "is21CFRPart11", "messageLock",
    "recipientsLock",     "useDisclosure", "brandId",
    "emailSubject",       "transactionId", "customFields",
    "emailSettings",      "notification",  "documents",
};

constexpr std::string_view kDocumentFields[] = {
    "documentBase64",     "display",
    "documentId",         "name",
    "password",           "signerMustAcknowledge",
    "includeInDownload",  "encryptedWithKeyManager",
    "transformPdfFields", "documentFields",
};

/// Of every kind what its wire record has. A recipient's own custom fields are deliberately not among them.
constexpr std::string_view kRecipientFields[] = {
    "clientUserId",
    "embeddedRecipientStartURL",
    "faxNumber",
    "note",
    "recipientId",
    "status",
    "deliveryMethod",
    "routingOrder",
    "inheritEmailNotificationConfiguration",
    "signedDateTime",
    "deliveredDateTime",
    "emailNotification",
    "recipientAttachments",
    "excludedDocuments",
    "name",
    "email",
    "emailRecipientPostSigningURL",
    // Signers and in-person signers.
    "hostName",
    "hostEmail",
    "signerName",
    "signerEmail",
    "bulkRecipientsUri",
    "recipientSuppliesTabs",
    "defaultRecipient",
    "isBulkRecipient",
    "offlineAttributes",
    "signatureInfo",
};

constexpr std::string_view kDeliveredOffline = "offline";

template <class S>
void finishSigner(const NVMCDRecipient& stored, S& signer) {
    signer.canSignOffline = "true";
    if (signer.deliveryMethod == kDeliveredOffline && signer.clientUserId.value_or("").empty())
        signer.clientUserId = Platform::current().random->uuidString();
    signer.tabs = stored.tabs ? wireTabs(*stored.tabs) : std::make_shared<NVESTabs>();
}

void finishDocument(const NVMCDDocument& stored, NVESDocument& document) {
    if (!stored.sandboxFilePath) return;
    if (const auto path = NVM_documentsPathByAppendingPathComponent(*stored.sandboxFilePath))
        document.fileSandboxURL.text = Url::fromFilePath(path->string()).absoluteString();
}

template <class T, field::List<T> NVESRecipients::*LIST>
void add(const NVMCDRecipient& stored, NVESRecipients& recipients) {
    auto& list = recipients.*LIST;
    if (!list) list.emplace();
    list->push_back(storeToWire().make<T>(stored));
}

void addRecipient(const NVMCDRecipient& stored, NVESRecipients& recipients) {
    switch (static_cast<int>(stored.recipientType.value_or(NVMRecipientTypeNotSet))) {
    case NVMRecipientTypeAgent:
        return add<NVESAgent, &NVESRecipients::agents>(stored, recipients);
    case NVMRecipientTypeCarbonCopy:
        return add<NVESCarbonCopy, &NVESRecipients::carbonCopies>(stored, recipients);
    case NVMRecipientTypeCertifiedDelivery:
        return add<NVESCertifiedDelivery, &NVESRecipients::certifiedDeliveries>(stored, recipients);
    case NVMRecipientTypeEditor:
        return add<NVESEditor, &NVESRecipients::editors>(stored, recipients);
    case NVMRecipientTypeIntermediary:
        return add<NVESIntermediary, &NVESRecipients::intermediaries>(stored, recipients);
    case NVMRecipientTypeInPersonSigner:
        return add<NVESInPersonSigner, &NVESRecipients::inPersonSigners>(stored, recipients);
    case NVMRecipientTypeSigner:
        return add<NVESSigner, &NVESRecipients::signers>(stored, recipients);
    default:
        return;
    }
}

void finishRecipients(const NVMCDRecipients& stored, NVESRecipients& recipients) {
    for (const auto* list :
         {&stored.agents, &stored.carbonCopies, &stored.certifiedDeliveries, &stored.editors,
          &stored.inPersonSigners, &stored.intermediaries, &stored.signers}) {
        if (!*list) continue;
        for (const auto& recipient : **list)
            addRecipient(*recipient, recipients);
    }
}

void finishEnvelope(const NVMCDEnvelopeDefinition& stored, NVESEnvelopeDefinition& envelope) {
    envelope.DisableResponsiveDocument = stored.disableResponsiveDocument.value_or(0) != 0 ? "true" : "false";
    envelope.recipients =
        storeToWire().make<NVESRecipients>(stored.recipients ? *stored.recipients : NVMCDRecipients());
}

constexpr std::string_view kRecipientsFields[] = {"currentRoutingOrder", "recipientCount"};

template <class T>
constexpr ConversionRule otherKind() {
    return {&NVMCDRecipient::type, &T::type, kRecipientFields};
}

constexpr ConversionRule kRules[] = {
    {&NVMCDEnvelopeDefinition::type,
     &NVESEnvelopeDefinition::type,
     kEnvelopeFields,
     {},
     &Then<finishEnvelope>::apply},
    {&NVMCDDocument::type, &NVESDocument::type, kDocumentFields, {}, &Then<finishDocument>::apply},
    {&NVMCDRecipients::type, &NVESRecipients::type, kRecipientsFields, {}, &Then<finishRecipients>::apply},
    {&NVMCDRecipient::type, &NVESSigner::type, kRecipientFields, {}, &Then<finishSigner<NVESSigner>>::apply},
    {&NVMCDRecipient::type,
     &NVESInPersonSigner::type,
     kRecipientFields,
     {},
     &Then<finishSigner<NVESInPersonSigner>>::apply},
    otherKind<NVESAgent>(),
    otherKind<NVESCarbonCopy>(),
    otherKind<NVESCertifiedDelivery>(),
    otherKind<NVESEditor>(),
    otherKind<NVESIntermediary>(),
};

const RecordConversion& storeToWire() {
    static constexpr RecordConversion conversion(kRules);
    return conversion;
}

} // namespace

std::shared_ptr<NVESEnvelopeDefinition>
nvm_apiEnvelopeFromCDEnvelopeDefinition(const NVMCDEnvelopeDefinition& envelope) {
    return storeToWire().make<NVESEnvelopeDefinition>(envelope);
}

std::shared_ptr<NVESEnvelopeDefinition>
createEnvelopeRequestForEnvelope(const NVMCDEnvelopeDefinition& envelope) {
    auto request = nvm_apiEnvelopeFromCDEnvelopeDefinition(envelope);
    request->status = kStatusSent;
    return request;
}

} // namespace norvane
