#pragma once

#include <norvane/store/NVMCDDocuments.h>
#include <norvane/store/NVMCDRecipients.h>
#include <norvane/store/NVMCDSettings.h>
#include <norvane/store/NVMManagedObject.h>
#include <norvane/store/StoredEnvelopeQueries.h>

#include <memory>

// Templates as they are stored. Members are the attributes and the relationships that lead to what a row
// owns; a number that stands for a Boolean is 1 or 0.
// A field list is a table, so its form is its own.
// clang-format off
namespace norvane {

#define NVMCD_ENVELOPE_TEMPLATE_DEFINITION_FIELDS(FIELD, R) \
    FIELD(R, Text, folderId) FIELD(R, Text, folderName) FIELD(R, Text, folderUri) \
    FIELD(R, Date, lastModified) FIELD(R, Text, name) FIELD(R, Number, pageCount) \
    FIELD(R, Text, parentFolderUri) FIELD(R, Text, password) FIELD(R, Number, shared) \
    FIELD(R, Text, templateDescription) FIELD(R, Text, templateId) FIELD(R, Text, uri) \
    FIELD(R, Text, varNewPassword) FIELD(R, Record<NVMCDUserInfo>, lastModifiedBy) \
    FIELD(R, Record<NVMCDUserInfo>, owner)

/// A template's catalogue data.
struct NVMCDEnvelopeTemplateDefinition : NVMManagedObject {
    NVMCD_ENTITY(NVMCDEnvelopeTemplateDefinition, NVMCD_ENVELOPE_TEMPLATE_DEFINITION_FIELDS)
};

#define NVMCD_ENVELOPE_TEMPLATE_FIELDS(FIELD, R) \
    FIELD(R, Number, allowMarkup) FIELD(R, Number, allowReassign) FIELD(R, Number, asynchronous) \
    FIELD(R, Number, authoritativeCopy) FIELD(R, Text, certificateUri) FIELD(R, Date, completedDateTime) \
    FIELD(R, Date, createdDateTime) FIELD(R, Text, customFieldsUri) FIELD(R, Date, declinedDateTime) \
    FIELD(R, Date, deletedDateTime) FIELD(R, Date, deliveredDateTime) FIELD(R, Text, documentsCombinedUri) \
    FIELD(R, Text, documentsUri) FIELD(R, Text, emailBlurb) FIELD(R, Text, emailSubject) \
    FIELD(R, Number, enableWetSign) FIELD(R, Number, enforceSignerVisibility) FIELD(R, Text, envelopeId) \
    FIELD(R, Number, envelopeIdStamping) FIELD(R, Text, envelopeUri) FIELD(R, Number, is21CFRPart11) \
    FIELD(R, Date, lastModifiedDateTime) FIELD(R, Number, messageLock) FIELD(R, Text, notificationUri) \
    FIELD(R, Text, purgeState) FIELD(R, Number, recipientsLock) FIELD(R, Text, recipientsUri) \
    FIELD(R, Date, sentDateTime) FIELD(R, Text, signingLocation) FIELD(R, Text, status) \
    FIELD(R, Date, statusChangedDateTime) FIELD(R, Text, templateId) FIELD(R, Text, templatesUri) \
    FIELD(R, Text, transactionId) FIELD(R, Text, useDisclosure) FIELD(R, Date, voidedDateTime) \
    FIELD(R, Date, cachedDateTime) FIELD(R, Text, voidedReason) FIELD(R, Number, autoNavigation) \
    FIELD(R, Number, isSignatureProviderEnvelope) FIELD(R, Text, brandId) FIELD(R, Number, brandLock) \
    FIELD(R, Record<NVMCDDocument>, combinedDocument) FIELD(R, List<NVMCDDocument>, documents) \
    FIELD(R, Record<NVMCDRecipients>, recipients) \
    FIELD(R, Record<NVMCDEnvelopeTemplateDefinition>, envelopeTemplateDefinition) \
    FIELD(R, Record<NVMCDNotification>, notification) FIELD(R, Record<NVMCDCustomFields>, customFields) \
    FIELD(R, Record<NVMCDEmailSettings>, emailSettings)

/// A downloaded template. `useDisclosure` is a text here and a number on the envelope, deliberately.
struct NVMCDEnvelopeTemplate : NVMManagedObject, StoredEnvelopeQueries {
    NVMCD_ENTITY(NVMCDEnvelopeTemplate, NVMCD_ENVELOPE_TEMPLATE_FIELDS)

    bool isLocallyOriginatedEnvelope() const override { return !envelopeId; }
    bool isCreatedFromTemplate() const override { return true; }
    bool isRemoteEnvelopeSignedByAtLeastOneSignerInCurrentSession() const override;
    void setSubjectIfNeeded() override;

  private:
    std::unique_ptr<NVMEnvelopeTemplate> domainRecord() const override;
};

} // namespace norvane
