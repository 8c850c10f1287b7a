#include <norvane/formula/NVM_NVValidator.h>
#include <norvane/model/NVMEnvelopeDefaults.h>
#include <norvane/sdk/Errors.h>

namespace norvane {

NORVANE_TABLE(NVMEnvelopeDefaults, NVM_ENVELOPE_DEFAULTS_FIELDS)
NORVANE_TABLE(NVMRecipientDefault, NVM_RECIPIENT_DEFAULT_FIELDS)

bool NVMEnvelopeDefaults::hasValidEnvelopeRecipients(Failure& error) const {
    if (!recipientDefaults || recipientDefaults->empty()) return false;
    const auto names = NVM_NVValidator::nvm_nameValidator();
    const auto isName = [&](const std::optional<std::string>& name) {
        return names->isValidText(name.value_or(""));
    };
    Failure last;
    for (const auto& entry : *recipientDefaults) {
        if (entry->removeRecipient) continue;
        if (entry->recipientType == NVMRecipientTypeInPersonSigner && !isName(entry->inPersonSignerName))
            last = NVM_errorInvalidInPersonSignerName();
        if (!isName(entry->recipientName))
            last = NVM_errorInvalidSignerName();
        else if (!nvm_stringIsValidEmail(entry->recipientEmail.value_or("")))
            last = NVM_errorInvalidSignerEmail();
    }
    if (!last) return true;
    error = std::move(last);
    return false;
}

Failure NVMEnvelopeDefaults::applyTo(NVMEnvelopeDefinition& envelope) const {
    if (recipientDefaults)
        if (Failure failure = envelope.updateRecipientsWithRecipientDefaults(*recipientDefaults))
            return failure;
    envelope.applyTabValueDefaults(tabValueDefaults);
    envelope.applyCustomFields(customFields);
    envelope.updateSubjectAndNoteForEnvelope(*this);
    return std::nullopt;
}

} // namespace norvane
