#pragma once

#include <norvane/model/NVMNamedRecipient.h>
#include <norvane/model/NVMRecipientSignatureInformation.h>
#include <norvane/model/NVMTabs.h>

namespace norvane {

struct NVESSigner;

// clang-format off
#define NVM_SIGNER_OWN_FIELDS(FIELD, R) \
    FIELD(R, Text, requireSignerCertificate) FIELD(R, Text, recipientSuppliesTabs) \
    FIELD(R, Text, bulkRecipientsUri) \
    FIELD(R, Record<NVMRecipientSignatureInformation>, signatureInfo) FIELD(R, Record<NVMTabs>, tabs) \
    FIELD(R, TextList, excludedDocuments) FIELD(R, Bool, defaultRecipient) \
    FIELD(R, Bool, signInEachLocation) FIELD(R, Bool, requireSignOnPaper) \
    FIELD(R, Bool, canSignOffline) FIELD(R, Bool, isBulkRecipient)
#define NVM_SIGNER_FIELDS(FIELD, R) \
    NVM_NAMED_RECIPIENT_ALL_FIELDS(FIELD, R) NVM_SIGNER_OWN_FIELDS(FIELD, R)
// clang-format on

/// One who signs.
struct NVMSigner : NVMNamedRecipient {
    NORVANE_RECORD(NVMSigner, NVM_SIGNER_OWN_FIELDS)

    NVMSigner() { recipientType = NVMRecipientTypeSigner; }
    explicit NVMSigner(const NVMCDRecipient& stored);
    explicit NVMSigner(const NVESSigner& wire);
    const RecordType& recordType() const override { return type(); }
    std::string nvm_name() const override { return name.value_or(""); }
    std::string nvm_email() const override { return email.value_or(""); }
    bool isDigitalCertificateSigner() const override;
    std::shared_ptr<NVMTabs> signerTabs() const override { return tabs; }
};

} // namespace norvane
