#pragma once

#include <norvane/record/Record.h>

namespace norvane {

// clang-format off
#define NVM_RECIPIENT_DEFAULT_FIELDS(FIELD, R) \
    FIELD(R, Integer, recipientSelectorType) FIELD(R, Text, recipientId) \
    FIELD(R, Text, recipientRoleName) FIELD(R, Integer, recipientType) FIELD(R, Text, recipientName) \
    FIELD(R, Text, recipientEmail) FIELD(R, Text, inPersonSignerName) FIELD(R, Bool, removeRecipient)
// clang-format on

/// Who takes a place in an envelope made from a template. Selector type 0 finds the recipient by
/// `recipientId`, any other (1 in practice) by `recipientRoleName`. `recipientType` is the kind that the
/// recipient is to have; only 6 (in-person signer) and 7 (signer) have an effect. For an in-person signer
/// `recipientName` and `recipientEmail` are the host's.
struct NVMRecipientDefault {
    NORVANE_RECORD(NVMRecipientDefault, NVM_RECIPIENT_DEFAULT_FIELDS)
};

} // namespace norvane
