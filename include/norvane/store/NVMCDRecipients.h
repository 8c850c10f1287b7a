#pragma once

#include <norvane/store/NVMCDTabs.h>
#include <norvane/store/NVMManagedObject.h>

// Recipients as they are stored. Members are the attributes and the relationships that lead to what a row
// owns; a number that stands for a Boolean is 1 or 0.
// A field list is a table, so its form is its own.
// clang-format off
namespace norvane {

#define NVMCD_USER_INFO_FIELDS(FIELD, R) \
    FIELD(R, Text, email) FIELD(R, Text, uri) FIELD(R, Text, userId) FIELD(R, Text, userName) \
    FIELD(R, Text, userStatus) FIELD(R, Text, userType)

/// A user of the service.
struct NVMCDUserInfo : NVMManagedObject {
    NVMCD_ENTITY(NVMCDUserInfo, NVMCD_USER_INFO_FIELDS)
};

#define NVMCD_ATTACHMENT_FIELDS(FIELD, R) \
    FIELD(R, Text, label) FIELD(R, Text, attachmentType)

/// An attachment of a recipient or of an envelope.
struct NVMCDAttachment : NVMManagedObject {
    NVMCD_ENTITY(NVMCDAttachment, NVMCD_ATTACHMENT_FIELDS)
};

#define NVMCD_RECIPIENT_EMAIL_NOTIFICATION_FIELDS(FIELD, R) \
    FIELD(R, Text, emailSubject) FIELD(R, Text, emailBody) FIELD(R, Text, supportedLanguage)

/// The mail that a recipient gets.
struct NVMCDRecipientEmailNotification : NVMManagedObject {
    NVMCD_ENTITY(NVMCDRecipientEmailNotification, NVMCD_RECIPIENT_EMAIL_NOTIFICATION_FIELDS)
};

#define NVMCD_RECIPIENT_SIGNATURE_INFORMATION_FIELDS(FIELD, R) \
    FIELD(R, Text, signatureName) FIELD(R, Text, signatureInitials) FIELD(R, Text, fontStyle)

/// How a signature is to look.
struct NVMCDRecipientSignatureInformation : NVMManagedObject {
    NVMCD_ENTITY(NVMCDRecipientSignatureInformation, NVMCD_RECIPIENT_SIGNATURE_INFORMATION_FIELDS)
};

#define NVMCD_OFFLINE_ATTRIBUTES_FIELDS(FIELD, R) \
    FIELD(R, Text, accountEsignId) FIELD(R, Text, deviceModel) FIELD(R, Text, deviceName) \
    FIELD(R, Number, gpsLatitude) FIELD(R, Number, gpsLongitude) FIELD(R, Text, offlineSigningHash) \
    FIELD(R, Text, _consumerDisclosureId)

/// Facts recorded when a recipient signs on this device.
struct NVMCDOfflineAttributes : NVMManagedObject {
    NVMCD_ENTITY(NVMCDOfflineAttributes, NVMCD_OFFLINE_ATTRIBUTES_FIELDS)
};

#define NVMCD_SIGNATURE_FIELDS(FIELD, R) \
    FIELD(R, Record<NVMCDTabImageData>, initialsImage) FIELD(R, Record<NVMCDTabImageData>, signatureImage)

/// What a recipient drew on this device.
struct NVMCDSignature : NVMManagedObject {
    NVMCD_ENTITY(NVMCDSignature, NVMCD_SIGNATURE_FIELDS)
};

#define NVMCD_RECIPIENT_FIELDS(FIELD, R) \
    FIELD(R, Text, accessCode) FIELD(R, Text, addAccessCodeToEmail) \
    FIELD(R, Date, authenticationFailedDateTime) FIELD(R, Number, canSignOffline) \
    FIELD(R, Number, isBulkRecipient) FIELD(R, Number, requireSignOnPaper) \
    FIELD(R, Number, templateLocked) FIELD(R, Number, templateRequired) FIELD(R, Number, totalTabCount) \
    FIELD(R, Text, clientUserId) FIELD(R, Date, declinedDateTime) FIELD(R, Text, declinedReason) \
    FIELD(R, Text, bulkRecipientsUri) FIELD(R, Text, emailRecipientPostSigningURL) \
    FIELD(R, Text, embeddedRecipientStartURL) FIELD(R, Text, deliveryMethod) FIELD(R, Text, faxNumber) \
    FIELD(R, Text, idCheckConfigurationName) FIELD(R, Number, defaultRecipient) \
    FIELD(R, Date, deliveredDateTime) FIELD(R, Text, email) FIELD(R, Text, hostEmail) \
    FIELD(R, Text, hostName) FIELD(R, Number, inheritEmailNotificationConfiguration) FIELD(R, Text, name) \
    FIELD(R, Text, note) FIELD(R, Text, recipientId) FIELD(R, Text, recipientIdGuid) \
    FIELD(R, Text, recipientSuppliesTabs) FIELD(R, Number, requireIdLookup) \
    FIELD(R, Text, requireSignerCertificate) FIELD(R, Text, roleName) FIELD(R, Number, routingOrder) \
    FIELD(R, Date, sentDateTime) FIELD(R, Date, signedDateTime) FIELD(R, Text, signerName) \
    FIELD(R, Text, signerEmail) FIELD(R, Number, signInEachLocation) FIELD(R, Text, signingGroupId) \
    FIELD(R, Text, signingGroupName) FIELD(R, Text, status) FIELD(R, Text, statusCode) \
    FIELD(R, Text, userId) FIELD(R, Text, inPersonSigningType) FIELD(R, Number, recipientType) \
    FIELD(R, TextList, excludedDocuments) FIELD(R, TextList, customFields) \
    FIELD(R, List<NVMCDUserInfo>, signingGroupUsers) FIELD(R, Record<NVMCDTabs>, tabs) \
    FIELD(R, Record<NVMCDRecipientSignatureInformation>, signatureInfo) \
    FIELD(R, List<NVMCDAttachment>, recipientAttachments) \
    FIELD(R, Record<NVMCDOfflineAttributes>, offlineAttributes) \
    FIELD(R, Record<NVMCDRecipientEmailNotification>, emailNotification) \
    FIELD(R, Record<NVMCDSignature>, _signature)

/// A recipient of any kind; the list that holds it and `recipientType` tell which.
struct NVMCDRecipient : NVMManagedObject {
    NVMCD_ENTITY(NVMCDRecipient, NVMCD_RECIPIENT_FIELDS)
};

#define NVMCD_RECIPIENTS_FIELDS(FIELD, R) \
    FIELD(R, Number, currentRoutingOrder) FIELD(R, Number, recipientCount) FIELD(R, Text, templateId) \
    FIELD(R, List<NVMCDRecipient>, agents) FIELD(R, List<NVMCDRecipient>, carbonCopies) \
    FIELD(R, List<NVMCDRecipient>, certifiedDeliveries) FIELD(R, List<NVMCDRecipient>, editors) \
    FIELD(R, List<NVMCDRecipient>, inPersonSigners) FIELD(R, List<NVMCDRecipient>, intermediaries) \
    FIELD(R, List<NVMCDRecipient>, signers)

/// The recipients of an envelope or a template, a list a kind.
struct NVMCDRecipients : NVMManagedObject {
    NVMCD_ENTITY(NVMCDRecipients, NVMCD_RECIPIENTS_FIELDS)
};

} // namespace norvane
