#pragma once

#include <norvane/api/NVESAccounts.h>
#include <norvane/api/NVESObject.h>
#include <norvane/api/NVESRecipients.h>
#include <norvane/api/NVESTabs.h>

// Envelopes: what the kit sends to make one and what the service says of them.
// A field list is a table, so its form is its own.
// clang-format off
namespace norvane {

struct NVESAttachment;
struct NVESBccEmailAddress;
struct NVESBulkEnvelopeStatus;
struct NVESCompositeTemplate;
struct NVESCustomFields;
struct NVESDocument;
struct NVESEmailSettings;
struct NVESEnvelope;
struct NVESEnvelopeTransactionStatus;
struct NVESErrorDetails;
struct NVESEventNotification;
struct NVESExpirations;
struct NVESListCustomField;
struct NVESLockInformation;
struct NVESMatchBox;
struct NVESNameValue;
struct NVESNotification;
struct NVESRecipientEmailNotification;
struct NVESRecipients;
struct NVESReminders;
struct NVESTabs;
struct NVESTemplateRole;
struct NVESTextCustomField;

#define NVES_ENVELOPE_STATE_FIELDS(FIELD, R) \
    FIELD(R, Text, transactionId) FIELD(R, Text, status) FIELD(R, Text, documentsUri) \
    FIELD(R, Text, recipientsUri) FIELD(R, Text, asynchronous) FIELD(R, Text, envelopeUri) \
    FIELD(R, Text, emailSubject) FIELD(R, Text, emailBlurb) FIELD(R, Text, envelopeId) \
    FIELD(R, Text, signingLocation) FIELD(R, Text, customFieldsUri) FIELD(R, Text, envelopeIdStamping) \
    FIELD(R, Text, authoritativeCopy) FIELD(R, Record<NVESNotification>, notification) \
    FIELD(R, Text, notificationUri) FIELD(R, Text, enforceSignerVisibility) \
    FIELD(R, Text, enableWetSign) FIELD(R, Text, allowMarkup) FIELD(R, Text, allowReassign) \
    FIELD(R, Text, createdDateTime) FIELD(R, Text, lastModifiedDateTime) \
    FIELD(R, Text, deliveredDateTime) FIELD(R, Text, sentDateTime) FIELD(R, Text, completedDateTime) \
    FIELD(R, Text, voidedDateTime) FIELD(R, Text, voidedReason) FIELD(R, Text, deletedDateTime) \
    FIELD(R, Text, declinedDateTime) FIELD(R, Text, statusChangedDateTime) \
    FIELD(R, Text, documentsCombinedUri) FIELD(R, Text, certificateUri) FIELD(R, Text, templatesUri) \
    FIELD(R, Text, messageLock) FIELD(R, Text, recipientsLock) FIELD(R, Text, useDisclosure) \
    FIELD(R, Record<NVESEmailSettings>, emailSettings) FIELD(R, Text, purgeState) \
    FIELD(R, Record<NVESLockInformation>, lockInformation) FIELD(R, Text, is21CFRPart11)

struct NVESEventNotification : NVESObject {
    NORVANE_RECORD(NVESEventNotification, NVES_PASSED_THROUGH_FIELDS)
};

struct NVESCompositeTemplate : NVESObject {
    NORVANE_RECORD(NVESCompositeTemplate, NVES_PASSED_THROUGH_FIELDS)
};

struct NVESLockInformation : NVESObject {
    NORVANE_RECORD(NVESLockInformation, NVES_PASSED_THROUGH_FIELDS)
};

struct NVESMatchBox : NVESObject {
    NORVANE_RECORD(NVESMatchBox, NVES_PASSED_THROUGH_FIELDS)
};

struct NVESBulkEnvelopeStatus : NVESObject {
    NORVANE_RECORD(NVESBulkEnvelopeStatus, NVES_PASSED_THROUGH_FIELDS)
};

#define NVES_ENVELOPE_TRANSACTION_STATUS_FIELDS(FIELD, R) \
    FIELD(R, Text, transactionId) FIELD(R, Text, envelopeId) FIELD(R, Text, status) \
    FIELD(R, Rest, otherMembers)
struct NVESEnvelopeTransactionStatus : NVESObject {
    NORVANE_RECORD(NVESEnvelopeTransactionStatus, NVES_ENVELOPE_TRANSACTION_STATUS_FIELDS)
};

#define NVES_BCC_EMAIL_ADDRESS_FIELDS(FIELD, R) \
    FIELD(R, Text, bccEmailAddressId) FIELD(R, Text, email) FIELD(R, Rest, otherMembers)
struct NVESBccEmailAddress : NVESObject {
    NORVANE_RECORD(NVESBccEmailAddress, NVES_BCC_EMAIL_ADDRESS_FIELDS)
};

#define NVES_DOCUMENT_FIELDS(FIELD, R) \
    FIELD(R, Text, documentId) FIELD(R, Text, uri) FIELD(R, Text, remoteUrl) FIELD(R, Text, name) \
    FIELD(R, Text, password) FIELD(R, Text, transformPdfFields) FIELD(R, Text, fileExtension) \
    FIELD(R, List<NVESMatchBox>, matchBoxes) FIELD(R, Text, order) FIELD(R, Text, pages) \
    FIELD(R, List<NVESNameValue>, documentFields) FIELD(R, Text, encryptedWithKeyManager) \
    FIELD(R, Text, documentBase64) FIELD(R, Text, applyAnchorTabs) FIELD(R, Text, display) \
    FIELD(R, Text, includeInDownload) FIELD(R, Text, signerMustAcknowledge) \
    FIELD(R, LocalText, fileSandboxURL)
struct NVESDocument : NVESObject {
    NORVANE_RECORD(NVESDocument, NVES_DOCUMENT_FIELDS)
};

#define NVES_TEXT_CUSTOM_FIELD_FIELDS(FIELD, R) \
    FIELD(R, Text, fieldId) FIELD(R, Text, name) FIELD(R, Text, show) FIELD(R, Text, required) \
    FIELD(R, Text, value) FIELD(R, Text, configurationType) \
    FIELD(R, Record<NVESErrorDetails>, errorDetails)
struct NVESTextCustomField : NVESObject {
    NORVANE_RECORD(NVESTextCustomField, NVES_TEXT_CUSTOM_FIELD_FIELDS)
};

#define NVES_LIST_CUSTOM_FIELD_FIELDS(FIELD, R) \
    FIELD(R, TextList, listItems) FIELD(R, Text, fieldId) FIELD(R, Text, name) FIELD(R, Text, show) \
    FIELD(R, Text, required) FIELD(R, Text, value) FIELD(R, Text, configurationType) \
    FIELD(R, Record<NVESErrorDetails>, errorDetails)
struct NVESListCustomField : NVESObject {
    NORVANE_RECORD(NVESListCustomField, NVES_LIST_CUSTOM_FIELD_FIELDS)
};

#define NVES_CUSTOM_FIELDS_FIELDS(FIELD, R) \
    FIELD(R, List<NVESTextCustomField>, textCustomFields) \
    FIELD(R, List<NVESListCustomField>, listCustomFields)
struct NVESCustomFields : NVESObject {
    NORVANE_RECORD(NVESCustomFields, NVES_CUSTOM_FIELDS_FIELDS)
};

#define NVES_REMINDERS_FIELDS(FIELD, R) \
    FIELD(R, Text, reminderEnabled) FIELD(R, Text, reminderDelay) FIELD(R, Text, reminderFrequency)
struct NVESReminders : NVESObject {
    NORVANE_RECORD(NVESReminders, NVES_REMINDERS_FIELDS)
};

#define NVES_EXPIRATIONS_FIELDS(FIELD, R) \
    FIELD(R, Text, expireEnabled) FIELD(R, Text, expireAfter) FIELD(R, Text, expireWarn)
struct NVESExpirations : NVESObject {
    NORVANE_RECORD(NVESExpirations, NVES_EXPIRATIONS_FIELDS)
};

#define NVES_NOTIFICATION_FIELDS(FIELD, R) \
    FIELD(R, Text, useAccountDefaults) FIELD(R, Record<NVESReminders>, reminders) \
    FIELD(R, Record<NVESExpirations>, expirations)
struct NVESNotification : NVESObject {
    NORVANE_RECORD(NVESNotification, NVES_NOTIFICATION_FIELDS)
};

#define NVES_EMAIL_SETTINGS_FIELDS(FIELD, R) \
    FIELD(R, Text, replyEmailAddressOverride) FIELD(R, Text, replyEmailNameOverride) \
    FIELD(R, List<NVESBccEmailAddress>, bccEmailAddresses)
struct NVESEmailSettings : NVESObject {
    NORVANE_RECORD(NVESEmailSettings, NVES_EMAIL_SETTINGS_FIELDS)
};

#define NVES_TEMPLATE_ROLE_FIELDS(FIELD, R) \
    FIELD(R, Text, email) FIELD(R, Text, roleName) FIELD(R, Text, name) FIELD(R, Text, signingGroupId) \
    FIELD(R, Text, inPersonSignerName) FIELD(R, Text, clientUserId) \
    FIELD(R, Text, embeddedRecipientStartURL) FIELD(R, Text, defaultRecipient) \
    FIELD(R, Text, accessCode) FIELD(R, Text, routingOrder) \
    FIELD(R, Record<NVESRecipientEmailNotification>, emailNotification) \
    FIELD(R, Record<NVESTabs>, tabs)
struct NVESTemplateRole : NVESObject {
    NORVANE_RECORD(NVESTemplateRole, NVES_TEMPLATE_ROLE_FIELDS)
};

#define NVES_ENVELOPE_DEFINITION_FIELDS(FIELD, R) \
    FIELD(R, List<NVESDocument>, documents) FIELD(R, List<NVESAttachment>, attachments) \
    FIELD(R, Record<NVESRecipients>, recipients) FIELD(R, Record<NVESCustomFields>, customFields) \
    FIELD(R, Record<NVESEventNotification>, eventNotification) FIELD(R, Text, brandId) \
    FIELD(R, Text, allowRecipientRecursion) FIELD(R, Text, templateId) \
    FIELD(R, List<NVESTemplateRole>, templateRoles) \
    FIELD(R, List<NVESCompositeTemplate>, compositeTemplates) FIELD(R, Text, accessibility) \
    NVES_ENVELOPE_STATE_FIELDS(FIELD, R) FIELD(R, Text, password) FIELD(R, Text, attachmentsUri) \
    FIELD(R, Text, initialSentDateTime) FIELD(R, Text, brandLock) \
    FIELD(R, Text, DisableResponsiveDocument)
struct NVESEnvelopeDefinition : NVESObject {
    NORVANE_RECORD(NVESEnvelopeDefinition, NVES_ENVELOPE_DEFINITION_FIELDS)
};

#define NVES_ENVELOPE_FIELDS(FIELD, R) \
    NVES_ENVELOPE_STATE_FIELDS(FIELD, R)
struct NVESEnvelope : NVESObject {
    NORVANE_RECORD(NVESEnvelope, NVES_ENVELOPE_FIELDS)
};

#define NVES_ENVELOPE_SUMMARY_FIELDS(FIELD, R) \
    FIELD(R, Text, envelopeId) FIELD(R, Text, uri) FIELD(R, Text, statusDateTime) \
    FIELD(R, Text, status)
struct NVESEnvelopeSummary : NVESObject {
    NORVANE_RECORD(NVESEnvelopeSummary, NVES_ENVELOPE_SUMMARY_FIELDS)
};

#define NVES_ENVELOPES_INFORMATION_FIELDS(FIELD, R) \
    FIELD(R, Text, resultSetSize) FIELD(R, Text, totalSetSize) FIELD(R, Text, startPosition) \
    FIELD(R, Text, endPosition) FIELD(R, Text, nextUri) FIELD(R, Text, previousUri) \
    FIELD(R, List<NVESEnvelope>, envelopes) \
    FIELD(R, List<NVESEnvelopeTransactionStatus>, envelopeTransactionStatuses)
struct NVESEnvelopesInformation : NVESObject {
    NORVANE_RECORD(NVESEnvelopesInformation, NVES_ENVELOPES_INFORMATION_FIELDS)
};

#define NVES_ENVELOPE_UPDATE_SUMMARY_FIELDS(FIELD, R) \
    FIELD(R, Text, envelopeId) FIELD(R, Record<NVESBulkEnvelopeStatus>, bulkEnvelopeStatus) \
    FIELD(R, Record<NVESLockInformation>, lockInformation) \
    FIELD(R, Record<NVESErrorDetails>, errorDetails)
struct NVESEnvelopeUpdateSummary : NVESObject {
    NORVANE_RECORD(NVESEnvelopeUpdateSummary, NVES_ENVELOPE_UPDATE_SUMMARY_FIELDS)
};

} // namespace norvane
// clang-format on
