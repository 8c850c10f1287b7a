#pragma once

#include <norvane/model/NVMNamedRecipient.h>

namespace norvane {

struct NVESCertifiedDelivery;

// clang-format off
#define NVM_CERTIFIED_DELIVERY_OWN_FIELDS(FIELD, R) FIELD(R, TextList, excludedDocuments)
#define NVM_CERTIFIED_DELIVERY_FIELDS(FIELD, R) \
    NVM_NAMED_RECIPIENT_ALL_FIELDS(FIELD, R) NVM_CERTIFIED_DELIVERY_OWN_FIELDS(FIELD, R)
// clang-format on

/// One who acknowledges receipt.
struct NVMCertifiedDelivery : NVMNamedRecipient {
    NORVANE_RECORD(NVMCertifiedDelivery, NVM_CERTIFIED_DELIVERY_OWN_FIELDS)

    NVMCertifiedDelivery() { recipientType = NVMRecipientTypeCertifiedDelivery; }
    explicit NVMCertifiedDelivery(const NVMCDRecipient& stored);
    explicit NVMCertifiedDelivery(const NVESCertifiedDelivery& wire);
    const RecordType& recordType() const override { return type(); }
};

} // namespace norvane
