#pragma once

#include <norvane/model/NVMRecipient.h>

namespace norvane {

// clang-format off
#define NVM_NAMED_RECIPIENT_ALL_FIELDS(FIELD, R) \
    NVM_RECIPIENT_FIELDS(FIELD, R) NVM_NAMED_RECIPIENT_FIELDS(FIELD, R)
// clang-format on

/// A recipient with a name and an e-mail of its own: every kind but the in-person signer.
struct NVMNamedRecipient : NVMRecipient {
    NORVANE_RECORD(NVMNamedRecipient, NVM_NAMED_RECIPIENT_FIELDS)

    using NVMRecipient::NVMRecipient;
    const RecordType& recordType() const override { return type(); }
    void setNameAndEmail(const std::optional<std::string>& newName,
                         const std::optional<std::string>& newEmail) override;
    bool matchesNameAndEmailOfAccount(const NVMAccount& account) const override;
};

} // namespace norvane
