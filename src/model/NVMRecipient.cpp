#include <norvane/model/NVMRecipient.h>
#include <norvane/model/NVMRecipients.h>
#include <norvane/sdk/NVMAccount.h>

#include <algorithm>

namespace norvane {

NORVANE_TABLE(NVMRecipient, NVM_RECIPIENT_FIELDS)
NORVANE_TABLE(NVMNamedRecipient, NVM_NAMED_RECIPIENT_ALL_FIELDS)
NORVANE_TABLE(NVMAgent, NVM_AGENT_FIELDS)
NORVANE_TABLE(NVMCarbonCopy, NVM_CARBON_COPY_FIELDS)
NORVANE_TABLE(NVMCertifiedDelivery, NVM_CERTIFIED_DELIVERY_FIELDS)
NORVANE_TABLE(NVMEditor, NVM_EDITOR_FIELDS)
NORVANE_TABLE(NVMInPersonSigner, NVM_IN_PERSON_SIGNER_FIELDS)
NORVANE_TABLE(NVMIntermediary, NVM_INTERMEDIARY_FIELDS)
NORVANE_TABLE(NVMSigner, NVM_SIGNER_FIELDS)

bool NVMRecipient::isSentOrDelivered() const { return status == kStatusSent || status == kStatusDelivered; }

bool NVMRecipient::hasCompletedOrDeclined() const {
    return status == kStatusCompleted || status == kStatusDeclined || status == kStatusSigned;
}

bool NVMRecipient::matchesUserWithUserID(std::string_view id) const {
    if (userId == id) return true;
    return signingGroupUsers && std::any_of(signingGroupUsers->begin(), signingGroupUsers->end(),
                                            [&](const auto& user) { return user->userId == id; });
}

bool NVMRecipient::hasOfflineSigningHash() const {
    return offlineAttributes && !offlineAttributes->offlineSigningHash.value_or("").empty();
}

std::string NVMRecipient::nvm_name() const { return "recipient name"; }
std::string NVMRecipient::nvm_email() const { return "recipient email"; }

void NVMNamedRecipient::setNameAndEmail(const std::optional<std::string>& newName,
                                        const std::optional<std::string>& newEmail) {
    name = newName;
    email = newEmail;
}

bool NVMNamedRecipient::matchesNameAndEmailOfAccount(const NVMAccount& account) const {
    return account.caseInsensitivelyMatchesName(name, email);
}

bool NVMInPersonSigner::matchesHostNameAndHostEmailOfAccount(const NVMAccount& account) const {
    return account.caseInsensitivelyMatchesName(hostName, hostEmail);
}

bool NVMSigner::isDigitalCertificateSigner() const { return !requireSignerCertificate.value_or("").empty(); }
bool NVMInPersonSigner::isDigitalCertificateSigner() const {
    return !requireSignerCertificate.value_or("").empty();
}

} // namespace norvane
