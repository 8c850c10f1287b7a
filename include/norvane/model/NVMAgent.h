#pragma once

#include <norvane/model/NVMNamedRecipient.h>

namespace norvane {

struct NVESAgent;

// clang-format off
#define NVM_AGENT_OWN_FIELDS(FIELD, R) FIELD(R, TextList, excludedDocuments)
#define NVM_AGENT_FIELDS(FIELD, R) \
    NVM_NAMED_RECIPIENT_ALL_FIELDS(FIELD, R) NVM_AGENT_OWN_FIELDS(FIELD, R)
// clang-format on

/// One who fills in the details of later recipients.
struct NVMAgent : NVMNamedRecipient {
    NORVANE_RECORD(NVMAgent, NVM_AGENT_OWN_FIELDS)

    NVMAgent() { recipientType = NVMRecipientTypeAgent; }
    explicit NVMAgent(const NVMCDRecipient& stored);
    explicit NVMAgent(const NVESAgent& wire);
    const RecordType& recordType() const override { return type(); }
};

} // namespace norvane
