#pragma once

#include <norvane/record/Record.h>

namespace norvane {

struct NVESRecipientSignatureInformation;
struct NVMCDRecipientSignatureInformation;

/// How a signature is to look.
// clang-format off
#define NVM_RECIPIENT_SIGNATURE_INFORMATION_FIELDS(FIELD, R) \
    FIELD(R, Text, signatureName) FIELD(R, Text, signatureInitials) FIELD(R, Text, fontStyle)
// clang-format on
struct NVMRecipientSignatureInformation {
    NORVANE_RECORD(NVMRecipientSignatureInformation, NVM_RECIPIENT_SIGNATURE_INFORMATION_FIELDS)

    NVMRecipientSignatureInformation() = default;
    explicit NVMRecipientSignatureInformation(const NVMCDRecipientSignatureInformation& stored);
    explicit NVMRecipientSignatureInformation(const NVESRecipientSignatureInformation& wire);
};

} // namespace norvane
