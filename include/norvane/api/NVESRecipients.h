#pragma once

#include <norvane/api/NVESAccounts.h>
#include <norvane/api/NVESObject.h>
#include <norvane/api/NVESTabs.h>

// Recipient records, one struct a kind, and the lists of them that an envelope carries.
// A field list is a table, so its form is its own.
// clang-format off
namespace norvane {

struct NVESAgent;
struct NVESAttachment;
struct NVESAuthenticationStatus;
struct NVESCarbonCopy;
struct NVESCertifiedDelivery;
struct NVESEditor;
struct NVESErrorDetails;
struct NVESIdCheckInformationInput;
struct NVESInPersonSigner;
struct NVESIntermediary;
struct NVESOfflineAttributes;
struct NVESRecipientEmailNotification;
struct NVESRecipientPhoneAuthentication;
struct NVESRecipientSAMLAuthentication;
struct NVESRecipientSMSAuthentication;
struct NVESRecipientSignatureInformation;
struct NVESRecipientUpdateResponse;
struct NVESSigner;
struct NVESSocialAuthentication;
struct NVESTabs;
struct NVESUserInfo;

#define NVES_NAMED_RECIPIENT_FIELDS(FIELD, R) \
    FIELD(R, Text, name) FIELD(R, Text, email) FIELD(R, Text, emailRecipientPostSigningURL)

#define NVES_AUTHENTICATED_RECIPIENT_FIELDS(FIELD, R) \
    FIELD(R, Text, signingGroupId) FIELD(R, Text, signingGroupName) \
    FIELD(R, List<NVESUserInfo>, signingGroupUsers) FIELD(R, Text, recipientId) \
    FIELD(R, Text, recipientIdGuid) FIELD(R, Text, accessCode) FIELD(R, Text, addAccessCodeToEmail) \
    FIELD(R, Text, requireIdLookup) FIELD(R, Text, idCheckConfigurationName) \
    FIELD(R, List<NVESSocialAuthentication>, socialAuthentications) \
    FIELD(R, Record<NVESRecipientPhoneAuthentication>, phoneAuthentication) \
    FIELD(R, Record<NVESRecipientSAMLAuthentication>, samlAuthentication) \
    FIELD(R, Record<NVESRecipientSMSAuthentication>, smsAuthentication) FIELD(R, Text, userId) \
    FIELD(R, Text, clientUserId) FIELD(R, Text, embeddedRecipientStartURL) \
    FIELD(R, TextList, customFields) FIELD(R, Text, routingOrder) \
    FIELD(R, Record<NVESIdCheckInformationInput>, idCheckInformationInput) \
    FIELD(R, List<NVESAttachment>, recipientAttachments) FIELD(R, Text, note) FIELD(R, Text, roleName) \
    FIELD(R, Text, status) FIELD(R, Text, signedDateTime) FIELD(R, Text, deliveredDateTime) \
    FIELD(R, Text, declinedDateTime) FIELD(R, Text, sentDateTime) FIELD(R, Text, declinedReason) \
    FIELD(R, Text, deliveryMethod) FIELD(R, Text, faxNumber) FIELD(R, Text, templateLocked) \
    FIELD(R, Text, templateRequired) \
    FIELD(R, Record<NVESRecipientEmailNotification>, emailNotification) \
    FIELD(R, Text, inheritEmailNotificationConfiguration) \
    FIELD(R, Record<NVESErrorDetails>, errorDetails) \
    FIELD(R, Record<NVESAuthenticationStatus>, recipientAuthenticationStatus) \
    FIELD(R, Text, totalTabCount)

struct NVESSocialAuthentication : NVESObject {
    NORVANE_RECORD(NVESSocialAuthentication, NVES_PASSED_THROUGH_FIELDS)
};

struct NVESRecipientPhoneAuthentication : NVESObject {
    NORVANE_RECORD(NVESRecipientPhoneAuthentication, NVES_PASSED_THROUGH_FIELDS)
};

struct NVESRecipientSAMLAuthentication : NVESObject {
    NORVANE_RECORD(NVESRecipientSAMLAuthentication, NVES_PASSED_THROUGH_FIELDS)
};

struct NVESRecipientSMSAuthentication : NVESObject {
    NORVANE_RECORD(NVESRecipientSMSAuthentication, NVES_PASSED_THROUGH_FIELDS)
};

struct NVESIdCheckInformationInput : NVESObject {
    NORVANE_RECORD(NVESIdCheckInformationInput, NVES_PASSED_THROUGH_FIELDS)
};

struct NVESAuthenticationStatus : NVESObject {
    NORVANE_RECORD(NVESAuthenticationStatus, NVES_PASSED_THROUGH_FIELDS)
};

#define NVES_ATTACHMENT_FIELDS(FIELD, R) \
    FIELD(R, Text, label) FIELD(R, Text, attachmentType) FIELD(R, Rest, otherMembers)
struct NVESAttachment : NVESObject {
    NORVANE_RECORD(NVESAttachment, NVES_ATTACHMENT_FIELDS)
};

#define NVES_OFFLINE_ATTRIBUTES_FIELDS(FIELD, R) \
    FIELD(R, Text, deviceName) FIELD(R, Text, deviceModel) FIELD(R, Text, gpsLatitude) \
    FIELD(R, Text, gpsLongitude) FIELD(R, Text, accountEsignId) FIELD(R, Text, offlineSigningHash)
struct NVESOfflineAttributes : NVESObject {
    NORVANE_RECORD(NVESOfflineAttributes, NVES_OFFLINE_ATTRIBUTES_FIELDS)
};

#define NVES_RECIPIENT_SIGNATURE_INFORMATION_FIELDS(FIELD, R) \
    FIELD(R, Text, signatureName) FIELD(R, Text, signatureInitials) FIELD(R, Text, fontStyle)
struct NVESRecipientSignatureInformation : NVESObject {
    NORVANE_RECORD(NVESRecipientSignatureInformation, NVES_RECIPIENT_SIGNATURE_INFORMATION_FIELDS)
};

#define NVES_RECIPIENT_EMAIL_NOTIFICATION_FIELDS(FIELD, R) \
    FIELD(R, Text, emailSubject) FIELD(R, Text, emailBody) FIELD(R, Text, supportedLanguage)
struct NVESRecipientEmailNotification : NVESObject {
    NORVANE_RECORD(NVESRecipientEmailNotification, NVES_RECIPIENT_EMAIL_NOTIFICATION_FIELDS)
};

#define NVES_SIGNER_FIELDS(FIELD, R) \
    FIELD(R, Record<NVESRecipientSignatureInformation>, signatureInfo) FIELD(R, Text, defaultRecipient) \
    FIELD(R, Record<NVESTabs>, tabs) FIELD(R, Text, signInEachLocation) \
    FIELD(R, Record<NVESOfflineAttributes>, offlineAttributes) FIELD(R, Text, requireSignerCertificate) \
    FIELD(R, Text, requireSignOnPaper) FIELD(R, Text, canSignOffline) FIELD(R, Text, isBulkRecipient) \
    FIELD(R, Text, bulkRecipientsUri) FIELD(R, Text, recipientSuppliesTabs) \
    FIELD(R, TextList, excludedDocuments) NVES_NAMED_RECIPIENT_FIELDS(FIELD, R) \
    NVES_AUTHENTICATED_RECIPIENT_FIELDS(FIELD, R) FIELD(R, Any, recipientSignatureProviders)
struct NVESSigner : NVESObject {
    NORVANE_RECORD(NVESSigner, NVES_SIGNER_FIELDS)
};

#define NVES_IN_PERSON_SIGNER_FIELDS(FIELD, R) \
    FIELD(R, Text, hostName) FIELD(R, Text, hostEmail) FIELD(R, Text, signerName) \
    FIELD(R, Text, signerEmail) FIELD(R, Record<NVESRecipientSignatureInformation>, signatureInfo) \
    FIELD(R, Text, defaultRecipient) FIELD(R, Record<NVESOfflineAttributes>, offlineAttributes) \
    FIELD(R, Record<NVESTabs>, tabs) FIELD(R, Text, signInEachLocation) \
    FIELD(R, Text, requireSignerCertificate) FIELD(R, Text, requireSignOnPaper) \
    FIELD(R, Text, canSignOffline) FIELD(R, Text, recipientSuppliesTabs) \
    NVES_AUTHENTICATED_RECIPIENT_FIELDS(FIELD, R) FIELD(R, Text, inPersonSigningType) \
    FIELD(R, TextList, excludedDocuments) FIELD(R, Any, recipientSignatureProviders)
struct NVESInPersonSigner : NVESObject {
    NORVANE_RECORD(NVESInPersonSigner, NVES_IN_PERSON_SIGNER_FIELDS)
};

#define NVES_CARBON_COPY_FIELDS(FIELD, R) \
    FIELD(R, TextList, excludedDocuments) NVES_NAMED_RECIPIENT_FIELDS(FIELD, R) \
    NVES_AUTHENTICATED_RECIPIENT_FIELDS(FIELD, R)
struct NVESCarbonCopy : NVESObject {
    NORVANE_RECORD(NVESCarbonCopy, NVES_CARBON_COPY_FIELDS)
};

#define NVES_CERTIFIED_DELIVERY_FIELDS(FIELD, R) \
    FIELD(R, TextList, excludedDocuments) NVES_NAMED_RECIPIENT_FIELDS(FIELD, R) \
    NVES_AUTHENTICATED_RECIPIENT_FIELDS(FIELD, R)
struct NVESCertifiedDelivery : NVESObject {
    NORVANE_RECORD(NVESCertifiedDelivery, NVES_CERTIFIED_DELIVERY_FIELDS)
};

#define NVES_AGENT_FIELDS(FIELD, R) \
    FIELD(R, TextList, excludedDocuments) NVES_NAMED_RECIPIENT_FIELDS(FIELD, R) \
    NVES_AUTHENTICATED_RECIPIENT_FIELDS(FIELD, R)
struct NVESAgent : NVESObject {
    NORVANE_RECORD(NVESAgent, NVES_AGENT_FIELDS)
};

#define NVES_EDITOR_FIELDS(FIELD, R) \
    NVES_NAMED_RECIPIENT_FIELDS(FIELD, R) NVES_AUTHENTICATED_RECIPIENT_FIELDS(FIELD, R)
struct NVESEditor : NVESObject {
    NORVANE_RECORD(NVESEditor, NVES_EDITOR_FIELDS)
};

#define NVES_INTERMEDIARY_FIELDS(FIELD, R) \
    FIELD(R, TextList, excludedDocuments) NVES_NAMED_RECIPIENT_FIELDS(FIELD, R) \
    NVES_AUTHENTICATED_RECIPIENT_FIELDS(FIELD, R)
struct NVESIntermediary : NVESObject {
    NORVANE_RECORD(NVESIntermediary, NVES_INTERMEDIARY_FIELDS)
};

#define NVES_RECIPIENTS_FIELDS(FIELD, R) \
    FIELD(R, List<NVESSigner>, signers) FIELD(R, List<NVESAgent>, agents) \
    FIELD(R, List<NVESEditor>, editors) FIELD(R, List<NVESIntermediary>, intermediaries) \
    FIELD(R, List<NVESCarbonCopy>, carbonCopies) \
    FIELD(R, List<NVESCertifiedDelivery>, certifiedDeliveries) \
    FIELD(R, List<NVESInPersonSigner>, inPersonSigners) FIELD(R, Text, recipientCount) \
    FIELD(R, Text, currentRoutingOrder) FIELD(R, Record<NVESErrorDetails>, errorDetails)
struct NVESRecipients : NVESObject {
    NORVANE_RECORD(NVESRecipients, NVES_RECIPIENTS_FIELDS)
};

#define NVES_RECIPIENT_UPDATE_RESPONSE_FIELDS(FIELD, R) \
    FIELD(R, Text, recipientId) FIELD(R, Record<NVESTabs>, tabs) \
    FIELD(R, Record<NVESErrorDetails>, errorDetails)
struct NVESRecipientUpdateResponse : NVESObject {
    NORVANE_RECORD(NVESRecipientUpdateResponse, NVES_RECIPIENT_UPDATE_RESPONSE_FIELDS)
};

#define NVES_RECIPIENTS_UPDATE_SUMMARY_FIELDS(FIELD, R) \
    FIELD(R, List<NVESRecipientUpdateResponse>, recipientUpdateResults)
struct NVESRecipientsUpdateSummary : NVESObject {
    NORVANE_RECORD(NVESRecipientsUpdateSummary, NVES_RECIPIENTS_UPDATE_SUMMARY_FIELDS)
};

} // namespace norvane
// clang-format on
