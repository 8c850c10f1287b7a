#pragma once

#include <norvane/model/NVMCustomFields.h>
#include <norvane/model/NVMDocument.h>
#include <norvane/model/NVMEmailSettings.h>
#include <norvane/model/NVMEnvelopeHelperProtocol.h>
#include <norvane/model/NVMEnvelopeTemplateDefinition.h>
#include <norvane/model/NVMNotification.h>
#include <norvane/model/NVMRecipients.h>
#include <norvane/record/Record.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace norvane {

struct NVMCDEnvelopeTemplate;

// clang-format off
#define NVM_ENVELOPE_TEMPLATE_FIELDS(FIELD, R) \
    FIELD(R, Record<NVMEnvelopeTemplateDefinition>, envelopeTemplateDefinition) \
    FIELD(R, List<NVMDocument>, documents) FIELD(R, Record<NVMDocument>, combinedDocument) \
    FIELD(R, Record<NVMRecipients>, recipients) FIELD(R, Record<NVMNotification>, notification) \
    FIELD(R, Record<NVMCustomFields>, customFields) FIELD(R, Record<NVMEmailSettings>, emailSettings) \
    FIELD(R, Text, envelopeId) FIELD(R, Text, transactionId) FIELD(R, Text, status) \
    FIELD(R, Text, purgeState) FIELD(R, Text, brandId) \
    FIELD(R, Text, signingLocation) FIELD(R, Text, voidedReason) FIELD(R, Text, envelopeUri) \
    FIELD(R, Text, documentsUri) FIELD(R, Text, documentsCombinedUri) \
    FIELD(R, Text, recipientsUri) FIELD(R, Text, customFieldsUri) FIELD(R, Text, notificationUri) \
    FIELD(R, Text, certificateUri) FIELD(R, Text, templatesUri) FIELD(R, Text, emailSubject) \
    FIELD(R, Text, emailBlurb) FIELD(R, Bool, asynchronous) FIELD(R, Bool, envelopeIdStamping) \
    FIELD(R, Bool, authoritativeCopy) FIELD(R, Bool, allowReassign) FIELD(R, Bool, autoNavigation) \
    FIELD(R, Bool, enforceSignerVisibility) FIELD(R, Bool, enableWetSign) FIELD(R, Bool, allowMarkup) \
    FIELD(R, Bool, messageLock) FIELD(R, Bool, recipientsLock) FIELD(R, Bool, is21CFRPart11) \
    FIELD(R, Bool, isSignatureProviderEnvelope) FIELD(R, Bool, brandLock) \
    FIELD(R, Integer, disclosureSetting) FIELD(R, Date, createdDateTime) \
    FIELD(R, Date, lastModifiedDateTime) \
    FIELD(R, Date, deliveredDateTime) FIELD(R, Date, sentDateTime) FIELD(R, Date, completedDateTime) \
    FIELD(R, Date, voidedDateTime) FIELD(R, Date, deletedDateTime) FIELD(R, Date, declinedDateTime) \
    FIELD(R, Date, statusChangedDateTime) FIELD(R, Date, cachedDateTime) \
    FIELD(R, Integer, currentRoutingOrder) FIELD(R, Text, syncFailureReason) \
    FIELD(R, Integer, failedAttemptsToSync)
// clang-format on

/// An envelope's content and settings; also what a downloaded template is turned into. `envelopeId` is absent
/// for an envelope made on the device and not yet uploaded, `combinedDocument` is all documents joined into
/// one PDF, a `currentRoutingOrder` of 0 means "not known", `disclosureSetting` is 1 when the disclosure is
/// to be shown. Copying copies the fields and shares the sub-records.
struct NVMEnvelopeTemplate : NVMEnvelopeHelperProtocol {
    NORVANE_RECORD(NVMEnvelopeTemplate, NVM_ENVELOPE_TEMPLATE_FIELDS)

    NVMEnvelopeTemplate() = default;
    /// An independent copy, with the bytes of its documents only when asked for.
    NVMEnvelopeTemplate(const NVMEnvelopeTemplate& envelope, bool includePdfs);
    /// Reads the bytes of the documents from their files when asked for.
    NVMEnvelopeTemplate(const NVMCDEnvelopeTemplate& stored, bool includePdfs);

    bool isLocallyOriginatedEnvelope() const override { return !envelopeId; }
    bool isAvailableRemotely() const override { return !isLocallyOriginatedEnvelope(); }
    /// Always, for a domain record.
    bool isCreatedFromTemplate() const override { return true; }
    bool isSelfSign() const override;
    DocumentList allDocuments() const override;
    std::optional<RecipientList> recipientsOfType(NVMRecipientType type) const override;
    RecipientList allSigners() const override;
    std::shared_ptr<NVMRecipient> recipientWithId(const std::optional<std::string>& id) const override;
    std::optional<TabList> tagsForSigner(const std::shared_ptr<NVMRecipient>& signer) const override;
    std::optional<RadioGroupList>
    radioGroupsForSigner(const std::shared_ptr<NVMRecipient>& signer) const override;
    TabList allTags() const override;
    TabList tagsForDocument(const NVMDocument& document) const override;
    /// `allTags` on that document; none for an absent id.
    TabList tagsForDocumentId(const std::optional<std::string>& documentId) const;
    std::shared_ptr<NVMRadioGroup>
    radioGroupWith(const NVMRadio& radio, const std::shared_ptr<NVMRecipient>& forRecipient) const override;
    RecipientList localSignersWithOnlyIncomplete(bool onlyIncomplete) const override;
    RecipientList incompleteLocalSigners() const override { return localSignersWithOnlyIncomplete(true); }
    RecipientList allOfflineRecipientsInCurrentRoutingOrder() const override;
    std::shared_ptr<NVMRecipients> signedRecipients() const override;
    std::shared_ptr<NVMRecipients> unsignedRecipients() const override;
    bool isRemoteEnvelopeSignedByAtLeastOneSignerInCurrentSession() const override;
    void setSubjectIfNeeded() override;
};

} // namespace norvane
