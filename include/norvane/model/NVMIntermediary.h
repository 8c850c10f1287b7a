#pragma once

#include <norvane/model/NVMNamedRecipient.h>

namespace norvane {

struct NVESIntermediary;

// clang-format off
#define NVM_INTERMEDIARY_OWN_FIELDS(FIELD, R) FIELD(R, TextList, excludedDocuments)
#define NVM_INTERMEDIARY_FIELDS(FIELD, R) \
    NVM_NAMED_RECIPIENT_ALL_FIELDS(FIELD, R) NVM_INTERMEDIARY_OWN_FIELDS(FIELD, R)
// clang-format on

/// One who names later recipients.
struct NVMIntermediary : NVMNamedRecipient {
    NORVANE_RECORD(NVMIntermediary, NVM_INTERMEDIARY_OWN_FIELDS)

    NVMIntermediary() { recipientType = NVMRecipientTypeIntermediary; }
    explicit NVMIntermediary(const NVMCDRecipient& stored);
    explicit NVMIntermediary(const NVESIntermediary& wire);
    const RecordType& recordType() const override { return type(); }
};

} // namespace norvane
