#pragma once

#include <norvane/store/NVMCDDocuments.h>
#include <norvane/store/NVMCDRecipients.h>
#include <norvane/store/NVMCDSettings.h>
#include <norvane/store/NVMManagedObject.h>
#include <norvane/store/StoredEnvelopeQueries.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

// Envelopes as they are stored. Members are the attributes and the relationships that lead to what a row
// owns; a number that stands for a Boolean is 1 or 0.
// A field list is a table, so its form is its own.
// clang-format off
namespace norvane {

class ManagedObjectContext;

#define NVMCD_TEMPLATE_ROLE_FIELDS(FIELD, R) \
    FIELD(R, Text, email) FIELD(R, Text, roleName) FIELD(R, Text, name) FIELD(R, Number, signingGroupId) \
    FIELD(R, Text, inPersonSignerName) FIELD(R, Text, clientUserId) \
    FIELD(R, Text, embeddedRecipientStartURL) FIELD(R, Text, defaultRecipient) FIELD(R, Text, accessCode) \
    FIELD(R, Number, routingOrder) FIELD(R, Record<NVMCDRecipientEmailNotification>, emailNotification) \
    FIELD(R, Record<NVMCDTabs>, tabs)

/// A role of a template, filled.
struct NVMCDTemplateRole : NVMManagedObject {
    NVMCD_ENTITY(NVMCDTemplateRole, NVMCD_TEMPLATE_ROLE_FIELDS)
};

#define NVMCD_ENVELOPE_DEFINITION_FIELDS(FIELD, R) \
    FIELD(R, Text, accessibility) FIELD(R, Number, allowMarkup) FIELD(R, Number, allowReassign) \
    FIELD(R, Number, allowRecipientRecursion) FIELD(R, Number, asynchronous) \
    FIELD(R, Text, attachmentsUri) FIELD(R, Number, authoritativeCopy) FIELD(R, Text, brandId) \
    FIELD(R, Number, brandLock) FIELD(R, Text, certificateUri) FIELD(R, Date, completedDateTime) \
    FIELD(R, Date, createdDateTime) FIELD(R, Text, customFieldsUri) FIELD(R, Date, declinedDateTime) \
    FIELD(R, Date, deletedDateTime) FIELD(R, Date, deliveredDateTime) \
    FIELD(R, Number, disableResponsiveDocument) FIELD(R, Text, documentsCombinedUri) \
    FIELD(R, Text, documentsUri) FIELD(R, Text, emailBlurb) FIELD(R, Text, emailSubject) \
    FIELD(R, Number, enableWetSign) FIELD(R, Number, enforceSignerVisibility) FIELD(R, Text, envelopeId) \
    FIELD(R, Number, envelopeIdStamping) FIELD(R, Text, envelopeUri) FIELD(R, Date, initialSentDateTime) \
    FIELD(R, Number, is21CFRPart11) FIELD(R, Date, lastModifiedDateTime) FIELD(R, Number, messageLock) \
    FIELD(R, Text, notificationUri) FIELD(R, Text, password) FIELD(R, Text, purgeState) \
    FIELD(R, Number, recipientsLock) FIELD(R, Text, recipientsUri) FIELD(R, Date, sentDateTime) \
    FIELD(R, Text, signingLocation) FIELD(R, Text, status) FIELD(R, Date, statusChangedDateTime) \
    FIELD(R, Text, templateId) FIELD(R, Text, templatesUri) FIELD(R, Text, transactionId) \
    FIELD(R, Number, useDisclosure) FIELD(R, Date, voidedDateTime) FIELD(R, Text, voidedReason) \
    FIELD(R, Number, syncPending) FIELD(R, Number, syncPendingUploadRetryCount) \
    FIELD(R, Text, syncFailureReason) FIELD(R, Number, hasIncompleteLocalSigners) \
    FIELD(R, List<NVMCDDocument>, documents) FIELD(R, List<NVMCDAttachment>, attachments) \
    FIELD(R, Record<NVMCDRecipients>, recipients) FIELD(R, Record<NVMCDCustomFields>, customFields) \
    FIELD(R, Record<NVMCDEventNotification>, eventNotification) \
    FIELD(R, List<NVMCDTemplateRole>, templateRoles) FIELD(R, Record<NVMCDEmailSettings>, emailSettings) \
    FIELD(R, Record<NVMCDLockInformation>, lockInformation) \
    FIELD(R, Record<NVMCDNotification>, notification)

// Attributes that share their names with queries.
#define NVMCD_ENVELOPE_DEFINITION_ANSWERS(FIELD, R) \
    FIELD(R, Number, isCreatedFromTemplate_) \
    FIELD(R, Number, isRemoteEnvelopeSignedByAtLeastOneSignerInCurrentSession_)

/// A stored envelope: made on this device or kept from the service. `syncPending` marks one that waits for
/// its upload; until the service answers, `envelopeId` holds the `transactionId`.
struct NVMCDEnvelopeDefinition : NVMManagedObject, StoredEnvelopeQueries {
    NVMCD_ENTITY(NVMCDEnvelopeDefinition, NVMCD_ENVELOPE_DEFINITION_FIELDS)

    /// {"envelopeId"} when there is one, else {"transactionId"}, else nothing.
    std::optional<Dictionary> userInfo() const;
    std::int64_t pendingSyncRetriesCount() const;             ///< 0 when absent
    bool isLocallyOriginatedEnvelope() const override { return true; } ///< a stored envelope always answers yes
    /// As they were set when the envelope was stored; false when absent.
    bool isCreatedFromTemplate() const override { return isCreatedFromTemplate_.value_or(0) != 0; }
    bool isRemoteEnvelopeSignedByAtLeastOneSignerInCurrentSession() const override {
        return isRemoteEnvelopeSignedByAtLeastOneSignerInCurrentSession_.value_or(0) != 0;
    }
    void setIsCreatedFromTemplate(bool is) { isCreatedFromTemplate_ = is ? 1 : 0; }
    void setIsRemoteEnvelopeSignedByAtLeastOneSignerInCurrentSession(bool is) {
        isRemoteEnvelopeSignedByAtLeastOneSignerInCurrentSession_ = is ? 1 : 0;
    }
    void setSubjectIfNeeded() override;
    /// The stored form of operations that mean something on the domain record only: they do nothing.
    bool saveInCoreDataWithContext(ManagedObjectContext&) { return false; }
    void incrementAndPersistPendingSyncRetryCountBy(std::int64_t) {}
    void updateAndPersistPendingSyncRetryCount(std::int64_t) {}
    void resetAndPersistPendingSyncRetryCount() { updateAndPersistPendingSyncRetryCount(0); }

    /// Makes it wait for its upload: sent and modified now under its transaction identifier, no failures yet.
    void saveAdditionalSynchronizationAttributesInEnvelope();
    /// Records a failed upload; it goes on waiting. The spelling is deliberate.
    void saveSyncFailueReason(const std::string& reason);

  private:
    NVMCD_ENVELOPE_DEFINITION_ANSWERS(NORVANE_DECLARE_FIELD, NVMCDEnvelopeDefinition)
    std::unique_ptr<NVMEnvelopeTemplate> domainRecord() const override;
};

} // namespace norvane
