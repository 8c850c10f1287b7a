#pragma once

#include <norvane/store/NVMCDRecipients.h>
#include <norvane/store/NVMCDTabs.h>
#include <norvane/store/NVMManagedObject.h>

// Settings of envelopes and templates as they are stored. Members are the attributes and the relationships
// that lead to what a row owns; a number that stands for a Boolean is 1 or 0.
// A field list is a table, so its form is its own.
// clang-format off
namespace norvane {

#define NVMCD_TEXT_CUSTOM_FIELD_FIELDS(FIELD, R) \
    FIELD(R, Text, fieldId) FIELD(R, Text, name) FIELD(R, Number, show) FIELD(R, Number, required) \
    FIELD(R, Text, value) FIELD(R, Text, configurationType)

/// A custom field of free text.
struct NVMCDTextCustomField : NVMManagedObject {
    NVMCD_ENTITY(NVMCDTextCustomField, NVMCD_TEXT_CUSTOM_FIELD_FIELDS)
};

#define NVMCD_LIST_CUSTOM_FIELD_FIELDS(FIELD, R) \
    FIELD(R, Text, fieldId) FIELD(R, Text, name) FIELD(R, Number, show) FIELD(R, Number, required) \
    FIELD(R, Text, value) FIELD(R, Text, configurationType) FIELD(R, TextList, listItems)

/// A custom field with a choice of values.
struct NVMCDListCustomField : NVMManagedObject {
    NVMCD_ENTITY(NVMCDListCustomField, NVMCD_LIST_CUSTOM_FIELD_FIELDS)
};

#define NVMCD_CUSTOM_FIELDS_FIELDS(FIELD, R) \
    FIELD(R, List<NVMCDTextCustomField>, textCustomFields) \
    FIELD(R, List<NVMCDListCustomField>, listCustomFields)

/// The custom fields of an envelope or a template.
struct NVMCDCustomFields : NVMManagedObject {
    NVMCD_ENTITY(NVMCDCustomFields, NVMCD_CUSTOM_FIELDS_FIELDS)
};

#define NVMCD_BCC_EMAIL_ADDRESS_FIELDS(FIELD, R) \
    FIELD(R, Text, bccEmailAddressId) FIELD(R, Text, email)

/// The inverse column is spelled "emailSettigs", deliberately.
struct NVMCDBCCEmailAddress : NVMManagedObject {
    NVMCD_ENTITY(NVMCDBCCEmailAddress, NVMCD_BCC_EMAIL_ADDRESS_FIELDS)
};

#define NVMCD_EMAIL_SETTINGS_FIELDS(FIELD, R) \
    FIELD(R, Text, replyEmailAddressOverride) FIELD(R, Text, replyEmailNameOverride) \
    FIELD(R, List<NVMCDBCCEmailAddress>, bccEmailAddresses)

/// Reply address and blind copies.
struct NVMCDEmailSettings : NVMManagedObject {
    NVMCD_ENTITY(NVMCDEmailSettings, NVMCD_EMAIL_SETTINGS_FIELDS)
};

#define NVMCD_REMINDERS_FIELDS(FIELD, R) \
    FIELD(R, Number, useAccountDefaults) FIELD(R, Number, reminderEnabled) FIELD(R, Number, reminderDelay) \
    FIELD(R, Number, reminderFrequency)

/// A kind of NVMCDNotification: it carries that entity's attribute too.
struct NVMCDReminders : NVMManagedObject {
    NVMCD_ENTITY(NVMCDReminders, NVMCD_REMINDERS_FIELDS)
};

#define NVMCD_EXPIRATIONS_FIELDS(FIELD, R) \
    FIELD(R, Number, useAccountDefaults) FIELD(R, Number, expireEnabled) FIELD(R, Number, expireAfter) \
    FIELD(R, Number, expireWarn)

/// A kind of NVMCDNotification: it carries that entity's attribute too.
struct NVMCDExpirations : NVMManagedObject {
    NVMCD_ENTITY(NVMCDExpirations, NVMCD_EXPIRATIONS_FIELDS)
};

#define NVMCD_NOTIFICATION_FIELDS(FIELD, R) \
    FIELD(R, Number, useAccountDefaults) FIELD(R, Record<NVMCDReminders>, reminders) \
    FIELD(R, Record<NVMCDExpirations>, expirations)

/// Reminders and expirations.
struct NVMCDNotification : NVMManagedObject {
    NVMCD_ENTITY(NVMCDNotification, NVMCD_NOTIFICATION_FIELDS)
};

#define NVMCD_ENVELOPE_EVENT_FIELDS(FIELD, R) \
    FIELD(R, Text, envelopeEventStatusCode) FIELD(R, Number, includeDocuments)

/// An envelope status to tell of.
struct NVMCDEnvelopeEvent : NVMManagedObject {
    NVMCD_ENTITY(NVMCDEnvelopeEvent, NVMCD_ENVELOPE_EVENT_FIELDS)
};

#define NVMCD_RECIPIENT_EVENT_FIELDS(FIELD, R) \
    FIELD(R, Text, recipientEventStatusCode) FIELD(R, Number, includeDocuments)

/// A recipient status to tell of.
struct NVMCDRecipientEvent : NVMManagedObject {
    NVMCD_ENTITY(NVMCDRecipientEvent, NVMCD_RECIPIENT_EVENT_FIELDS)
};

#define NVMCD_EVENT_NOTIFICATION_FIELDS(FIELD, R) \
    FIELD(R, Text, url) FIELD(R, Number, loggingEnabled) FIELD(R, Number, requireAcknowledgment) \
    FIELD(R, Number, useSoapInterface) FIELD(R, Text, soapNameSpace) \
    FIELD(R, Number, includeCertificateWithSoap) FIELD(R, Number, signMessageWithX509Cert) \
    FIELD(R, Number, includeDocuments) FIELD(R, Number, includeEnvelopeVoidReason) \
    FIELD(R, Number, includeTimeZone) FIELD(R, Number, includeSenderAccountAsCustomField) \
    FIELD(R, Number, includeDocumentFields) FIELD(R, Number, includeCertificateOfCompletion) \
    FIELD(R, List<NVMCDEnvelopeEvent>, envelopeEvents) \
    FIELD(R, List<NVMCDRecipientEvent>, recipientEvents)

/// Where the service tells the sender of events.
struct NVMCDEventNotification : NVMManagedObject {
    NVMCD_ENTITY(NVMCDEventNotification, NVMCD_EVENT_NOTIFICATION_FIELDS)
};

#define NVMCD_LOCK_INFORMATION_FIELDS(FIELD, R) \
    FIELD(R, Text, lockedByApp) FIELD(R, Date, lockedUntilDateTime) \
    FIELD(R, Number, lockDurationInSeconds) FIELD(R, Text, lockType) FIELD(R, Number, useScratchPad) \
    FIELD(R, Text, lockToken) FIELD(R, Record<NVMCDUserInfo>, lockedByUser) \
    FIELD(R, Record<NVMCDErrorDetails>, errorDetails)

/// Who edits the envelope on the service.
struct NVMCDLockInformation : NVMManagedObject {
    NVMCD_ENTITY(NVMCDLockInformation, NVMCD_LOCK_INFORMATION_FIELDS)
};

} // namespace norvane
