#pragma once

#include <norvane/model/NVMCustomFields.h>
#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/model/NVMRecipientDefault.h>
#include <norvane/platform/Result.h>
#include <norvane/record/Record.h>

namespace norvane {

// clang-format off
#define NVM_ENVELOPE_DEFAULTS_FIELDS(FIELD, R) \
    FIELD(R, List<NVMRecipientDefault>, recipientDefaults) FIELD(R, Text, emailSubject) \
    FIELD(R, Text, emailBlurb) FIELD(R, Text, envelopeTitle) \
    FIELD(R, Record<NVMCustomFields>, customFields)
// clang-format on

/// What the host fills in when it turns a template into an envelope; everything may be absent.
struct NVMEnvelopeDefaults {
    NORVANE_RECORD(NVMEnvelopeDefaults, NVM_ENVELOPE_DEFAULTS_FIELDS)

    /// Not a field of the table: its order counts, and keys are free.
    std::optional<TabValueDefaults> tabValueDefaults;

    /// Whether the recipient entries may be sent: there is at least one, and those that do not remove a
    /// recipient have valid names and e-mails. `error` gets the last fault found; it stays untouched for an
    /// empty list.
    bool hasValidEnvelopeRecipients(Failure& error) const;
    /// Puts recipients, tab values, custom fields, subject and blurb into the envelope, in this order. An
    /// error of the recipients ends it; what was applied before stays applied.
    Failure applyTo(NVMEnvelopeDefinition& envelope) const;
};

} // namespace norvane
