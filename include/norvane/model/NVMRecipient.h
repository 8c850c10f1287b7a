#pragma once

#include <norvane/model/NVMAttachment.h>
#include <norvane/model/NVMOfflineAttributes.h>
#include <norvane/model/NVMRecipientEmailNotification.h>
#include <norvane/model/NVMRecipientType.h>
#include <norvane/model/NVMSignature.h>
#include <norvane/record/Record.h>
#include <norvane/sdk/NVMUserInfo.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace norvane {

struct NVMAccount;
struct NVMCDRecipient;
struct NVMTabs;

// Statuses that the kit asks for; they compare exactly.
inline constexpr std::string_view kStatusSent = "sent";
inline constexpr std::string_view kStatusDelivered = "delivered";
inline constexpr std::string_view kStatusCompleted = "completed";
inline constexpr std::string_view kStatusDeclined = "declined";
inline constexpr std::string_view kStatusSigned = "signed";

// clang-format off
#define NVM_RECIPIENT_FIELDS(FIELD, R) \
    FIELD(R, Integer, recipientType) FIELD(R, Text, recipientId) FIELD(R, Text, recipientIdGuid) \
    FIELD(R, Text, signingGroupId) FIELD(R, Text, signingGroupName) \
    FIELD(R, List<NVMUserInfo>, signingGroupUsers) FIELD(R, Text, accessCode) \
    FIELD(R, Text, addAccessCodeToEmail) FIELD(R, Bool, requireIdLookup) \
    FIELD(R, Text, idCheckConfigurationName) FIELD(R, Text, userId) FIELD(R, Text, clientUserId) \
    FIELD(R, Text, embeddedRecipientStartURL) FIELD(R, TextList, customFields) \
    FIELD(R, Number, routingOrder) FIELD(R, List<NVMAttachment>, recipientAttachments) \
    FIELD(R, Text, note) FIELD(R, Text, roleName) FIELD(R, Text, status) \
    FIELD(R, Text, declinedReason) FIELD(R, Text, deliveryMethod) FIELD(R, Text, faxNumber) \
    FIELD(R, Date, signedDateTime) FIELD(R, Date, deliveredDateTime) FIELD(R, Date, declinedDateTime) \
    FIELD(R, Date, sentDateTime) FIELD(R, Bool, templateLocked) FIELD(R, Bool, templateRequired) \
    FIELD(R, Bool, inheritEmailNotificationConfiguration) FIELD(R, Number, totalTabCount) \
    FIELD(R, Record<NVMRecipientEmailNotification>, emailNotification) \
    FIELD(R, Record<NVMOfflineAttributes>, offlineAttributes) \
    FIELD(R, Record<NVMSignature>, signature)

/// What the kinds that are told apart by name and e-mail have.
#define NVM_NAMED_RECIPIENT_FIELDS(FIELD, R) \
    FIELD(R, Text, name) FIELD(R, Text, email) FIELD(R, Text, emailRecipientPostSigningURL)
// clang-format on

/// A person who acts on an envelope: what all kinds have in common. `recipientId` is unique within the
/// envelope and the key of every look-up; `roleName` is the role of the template that the recipient fills.
/// Copying copies the fields and shares the sub-records; see NVMRecipients::withRecipients for independent
/// copies.
struct NVMRecipient {
    NORVANE_RECORD(NVMRecipient, NVM_RECIPIENT_FIELDS)

    NVMRecipient() = default;
    explicit NVMRecipient(const NVMCDRecipient& stored);
    NVMRecipient(const NVMRecipient&) = default;
    NVMRecipient& operator=(const NVMRecipient&) = default;
    virtual ~NVMRecipient() = default;

    /// The table of the record's own kind.
    virtual const RecordType& recordType() const { return type(); }

    /// "sent" or "delivered".
    bool isSentOrDelivered() const;
    /// "completed", "declined" or "signed".
    bool hasCompletedOrDeclined() const;
    /// Whether the recipient, or one of the users of its signing group, is that user.
    bool matchesUserWithUserID(std::string_view userId) const;
    /// Whether an offline signing hash was recorded: the recipient has signed on this device.
    bool hasOfflineSigningHash() const;

    /// The name of a signer or carbon copy, the signer's name of an in-person signer (empty when absent); for
    /// every other kind the fixed text "recipient name", in English, deliberately.
    virtual std::string nvm_name() const;
    /// The same with e-mails and "recipient email".
    virtual std::string nvm_email() const;
    /// Whether signing needs a digital certificate; only signers and in-person signers can.
    virtual bool isDigitalCertificateSigner() const { return false; }

    /// The tabs; null when there are none, and for all kinds but signers and in-person signers.
    virtual std::shared_ptr<NVMTabs> signerTabs() const { return nullptr; }
    /// Sets the fields `name` and `email` where the kind has them, also to absent.
    virtual void setNameAndEmail(const std::optional<std::string>&, const std::optional<std::string>&) {}
    /// Whether `name` and `email` are the account's, as NVMAccount compares them; false for kinds without.
    virtual bool matchesNameAndEmailOfAccount(const NVMAccount&) const { return false; }
    /// The same for an in-person signer's host; false for other kinds.
    virtual bool matchesHostNameAndHostEmailOfAccount(const NVMAccount&) const { return false; }
};

using RecipientList = std::vector<std::shared_ptr<NVMRecipient>>;

} // namespace norvane
