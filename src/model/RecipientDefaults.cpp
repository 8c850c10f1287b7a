#include <norvane/model/NVMEnvelopeDefaults.h>
#include <norvane/sdk/Errors.h>

// The part of an envelope that puts the host's people into their places.

namespace norvane {
namespace {

constexpr std::int64_t kSelectById = 0;
constexpr std::int64_t kSelectByRoleName = 1;

NVMError notFound(const NVMRecipientDefault& entry) {
    return entry.recipientSelectorType == kSelectByRoleName
               ? NVM_errorTemplateWithInvalidRecipientsForRoleName(entry.recipientRoleName)
               : NVM_errorInvalidRecipientId();
}

void applyToInPersonSigner(NVMRecipients& recipients, const std::shared_ptr<NVMInPersonSigner>& signer,
                           const NVMRecipientDefault& entry) {
    if (entry.recipientType == NVMRecipientTypeSigner) {
        recipients.signerFromInPersonSigner(signer, entry.recipientName, entry.recipientEmail);
        return;
    }
    signer->signerName = entry.inPersonSignerName;
    signer->hostName = entry.recipientName;
    signer->hostEmail = entry.recipientEmail;
}

void apply(NVMRecipients& recipients, const std::shared_ptr<NVMRecipient>& recipient,
           const NVMRecipientDefault& entry) {
    if (auto inPerson = std::dynamic_pointer_cast<NVMInPersonSigner>(recipient))
        return applyToInPersonSigner(recipients, inPerson, entry);
    auto signer = std::dynamic_pointer_cast<NVMSigner>(recipient);
    if (signer && entry.recipientType == NVMRecipientTypeInPersonSigner) {
        recipients.inPersonSignerFromSigner(signer, entry.recipientName, entry.recipientEmail,
                                            entry.inPersonSignerName, std::nullopt);
        return;
    }
    // Deliberate: what the entry lacks clears the recipient's.
    recipient->setNameAndEmail(entry.recipientName, entry.recipientEmail);
}

} // namespace

std::shared_ptr<NVMRecipient>
NVMEnvelopeDefinition::recipientWithDefault(const NVMRecipientDefault& recipientDefault) const {
    if (!recipients) return nullptr;
    return recipientDefault.recipientSelectorType == kSelectById
               ? recipients->recipientWithId(recipientDefault.recipientId)
               : recipients->recipientWithRoleName(recipientDefault.recipientRoleName);
}

Failure NVMEnvelopeDefinition::updateRecipientsWithRecipientDefaults(
    const std::vector<std::shared_ptr<NVMRecipientDefault>>& defaults) {
    for (const auto& entry : defaults) {
        const auto recipient = recipientWithDefault(*entry);
        if (!recipient) return notFound(*entry);
        if (!entry->removeRecipient) {
            apply(*recipients, recipient, *entry);
            continue;
        }
        if (recipients->allRecipients().size() < 2) return NVM_errorTemplateCannotRemoveRecipient();
        recipients->removeRecipient(recipient);
    }
    return std::nullopt;
}

} // namespace norvane
