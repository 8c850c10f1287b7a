#pragma once

#include <norvane/model/NVMRecipient.h>
#include <norvane/model/NVMRecipientSignatureInformation.h>
#include <norvane/model/NVMTabs.h>

namespace norvane {

struct NVESInPersonSigner;

// clang-format off
#define NVM_IN_PERSON_SIGNER_OWN_FIELDS(FIELD, R) \
    FIELD(R, Text, hostName) FIELD(R, Text, hostEmail) FIELD(R, Text, signerName) \
    FIELD(R, Text, signerEmail) FIELD(R, Text, requireSignerCertificate) \
    FIELD(R, Text, recipientSuppliesTabs) FIELD(R, Text, inPersonSigningType) \
    FIELD(R, Record<NVMRecipientSignatureInformation>, signatureInfo) FIELD(R, Record<NVMTabs>, tabs) \
    FIELD(R, Bool, defaultRecipient) FIELD(R, Bool, signInEachLocation) \
    FIELD(R, Bool, requireSignOnPaper) FIELD(R, Bool, canSignOffline)
#define NVM_IN_PERSON_SIGNER_FIELDS(FIELD, R) \
    NVM_RECIPIENT_FIELDS(FIELD, R) NVM_IN_PERSON_SIGNER_OWN_FIELDS(FIELD, R)
// clang-format on

/// One who signs on the device of a host, the account user named by `hostName` and `hostEmail`.
struct NVMInPersonSigner : NVMRecipient {
    NORVANE_RECORD(NVMInPersonSigner, NVM_IN_PERSON_SIGNER_OWN_FIELDS)

    NVMInPersonSigner() { recipientType = NVMRecipientTypeInPersonSigner; }
    explicit NVMInPersonSigner(const NVMCDRecipient& stored);
    explicit NVMInPersonSigner(const NVESInPersonSigner& wire);
    const RecordType& recordType() const override { return type(); }
    std::string nvm_name() const override { return signerName.value_or(""); }
    std::string nvm_email() const override { return signerEmail.value_or(""); }
    bool matchesHostNameAndHostEmailOfAccount(const NVMAccount& account) const override;
    bool isDigitalCertificateSigner() const override;
    std::shared_ptr<NVMTabs> signerTabs() const override { return tabs; }
};

} // namespace norvane
