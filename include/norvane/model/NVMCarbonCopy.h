#pragma once

#include <norvane/model/NVMNamedRecipient.h>

namespace norvane {

struct NVESCarbonCopy;

// clang-format off
#define NVM_CARBON_COPY_OWN_FIELDS(FIELD, R) FIELD(R, TextList, excludedDocuments)
#define NVM_CARBON_COPY_FIELDS(FIELD, R) \
    NVM_NAMED_RECIPIENT_ALL_FIELDS(FIELD, R) NVM_CARBON_COPY_OWN_FIELDS(FIELD, R)
// clang-format on

/// One who gets a copy.
struct NVMCarbonCopy : NVMNamedRecipient {
    NORVANE_RECORD(NVMCarbonCopy, NVM_CARBON_COPY_OWN_FIELDS)

    NVMCarbonCopy() { recipientType = NVMRecipientTypeCarbonCopy; }
    explicit NVMCarbonCopy(const NVMCDRecipient& stored);
    explicit NVMCarbonCopy(const NVESCarbonCopy& wire);
    const RecordType& recordType() const override { return type(); }
    std::string nvm_name() const override { return name.value_or(""); }
    std::string nvm_email() const override { return email.value_or(""); }
};

} // namespace norvane
