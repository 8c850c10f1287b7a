#pragma once

#include <norvane/model/NVMAgent.h>
#include <norvane/model/NVMCarbonCopy.h>
#include <norvane/model/NVMCertifiedDelivery.h>
#include <norvane/model/NVMEditor.h>
#include <norvane/model/NVMInPersonSigner.h>
#include <norvane/model/NVMIntermediary.h>
#include <norvane/model/NVMRecipient.h>
#include <norvane/model/NVMSigner.h>
#include <norvane/record/Record.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace norvane {

struct NVESRecipients;
struct NVMCDRecipients;

/// Posted when a recipient changed its kind; "recipientIds" holds the ids.
inline constexpr std::string_view NVMEnvelopeRecipientsDidChangeNotification =
    "NVMEnvelopeRecipientsDidChangeNotification";

// clang-format off
#define NVM_RECIPIENTS_FIELDS(FIELD, R) \
    FIELD(R, List<NVMSigner>, signers) FIELD(R, List<NVMAgent>, agents) \
    FIELD(R, List<NVMEditor>, editors) FIELD(R, List<NVMIntermediary>, intermediaries) \
    FIELD(R, List<NVMCarbonCopy>, carbonCopies) \
    FIELD(R, List<NVMCertifiedDelivery>, certifiedDeliveries) \
    FIELD(R, List<NVMInPersonSigner>, inPersonSigners) FIELD(R, Number, recipientCount) \
    FIELD(R, Number, currentRoutingOrder)
// clang-format on

/// The recipients of an envelope, a list a kind.
struct NVMRecipients {
    using Text = std::optional<std::string>;

    NORVANE_RECORD(NVMRecipients, NVM_RECIPIENTS_FIELDS)

    NVMRecipients() = default;
    explicit NVMRecipients(const NVMCDRecipients& stored);
    explicit NVMRecipients(const NVESRecipients& wire);
    /// An independent copy: new recipients with new tabs and sub-records.
    static std::shared_ptr<NVMRecipients> withRecipients(const NVMRecipients& recipients);

    /// Agents, carbon copies, certified deliveries, editors, in-person signers, intermediaries, signers.
    RecipientList allRecipients() const;
    /// In-person signers, then signers.
    RecipientList allSigners() const;
    RecipientList allSignersAndInpersonSigners() const { return allSigners(); }
    /// In-person signers, signers, certified deliveries.
    RecipientList allSignersIncludingNeedsToView() const;
    /// The list of a kind; absent when the list is, and for numbers outside 1 to 7.
    std::optional<RecipientList> recipientsOfType(NVMRecipientType type) const;

    /// The first of `allRecipients` with exactly that id; null if none, and for an absent id.
    std::shared_ptr<NVMRecipient> recipientWithId(const Text& recipientId) const;
    /// The same operation: whatever its kind, deliberately.
    std::shared_ptr<NVMRecipient> inPersonSignerWithId(const Text& recipientId) const;
    /// The only one with that role; null when none or several have it. Roles compare exactly, or, when the
    /// set-up key of that purpose is on, without white space around them and ignoring case and diacritics.
    std::shared_ptr<NVMRecipient> recipientWithRoleName(const Text& roleName) const;
    /// Those whose turn it is; none when the current order is not known.
    RecipientList currentRoutingOrderRecipients() const;
    bool anyCurrentRecipientsHaveDeclined() const;
    /// Also true without any recipient.
    bool allRecipientsHaveCompletedOrDeclined() const;

    /// Appends it to the list of its class, whatever its `recipientType`; false for a plain NVMRecipient.
    bool addRecipient(const std::shared_ptr<NVMRecipient>& recipient);
    /// Takes that very object out of the list that its `recipientType` names; nothing for other numbers.
    void removeRecipient(const std::shared_ptr<NVMRecipient>& recipient);

    /// Replaces the in-person signer with the given one's id by a signer (without role) of that name and
    /// e-mail, at the end of `signers`, and posts NVMEnvelopeRecipientsDidChangeNotification without an
    /// envelope id. Gives the signer; null, and nothing changes, when that id is no in-person signer's.
    std::shared_ptr<NVMSigner> signerFromInPersonSigner(const std::shared_ptr<NVMRecipient>& inPersonSigner,
                                                        const Text& name, const Text& email);
    /// Replaces the signer by an in-person signer at the end of `inPersonSigners`. No notification. Null for
    /// null.
    std::shared_ptr<NVMInPersonSigner> inPersonSignerFromSigner(const std::shared_ptr<NVMSigner>& signer,
                                                                const Text& hostName, const Text& hostEmail,
                                                                const Text& signerName,
                                                                const Text& signerEmail);
};

} // namespace norvane
