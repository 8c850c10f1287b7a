#include <norvane/model/NVMEnvelopeTemplate.h>
#include <norvane/sdk/NVMCredentials.h>

#include <algorithm>

// The part of an envelope that tells who signs on this device, and who has.

namespace norvane {
namespace {

bool isInTurn(const NVMRecipient& recipient, std::int64_t currentRoutingOrder) {
    return recipient.routingOrder == static_cast<double>(currentRoutingOrder);
}

bool hasTabs(const NVMRecipient& recipient) {
    const auto tabs = recipient.signerTabs();
    return tabs && !tabs->allTabs().empty();
}

std::shared_ptr<NVMRecipients> recipientsOf(const RecipientList& list) {
    auto recipients = std::make_shared<NVMRecipients>();
    for (const auto& recipient : list)
        recipients->addRecipient(recipient);
    return recipients;
}

} // namespace

RecipientList NVMEnvelopeTemplate::localSignersWithOnlyIncomplete(bool onlyIncomplete) const {
    const auto account = NVMCredentials::primaryCredentials();
    if (!recipients || !account) return {};
    const bool everyOrder = (!isAvailableRemotely() && !isCreatedFromTemplate()) || currentRoutingOrder == 0;
    RecipientList local = recipients->allSigners();
    std::erase_if(local, [&](const auto& signer) {
        const bool isOpen = !signer->signedDateTime || !onlyIncomplete;
        const bool isHere = signer->matchesNameAndEmailOfAccount(*account) ||
                            signer->matchesHostNameAndHostEmailOfAccount(*account);
        return !isOpen || !isHere || !(everyOrder || isInTurn(*signer, currentRoutingOrder));
    });
    return local;
}

RecipientList NVMEnvelopeTemplate::allOfflineRecipientsInCurrentRoutingOrder() const {
    if (isCreatedFromTemplate()) return localSignersWithOnlyIncomplete(false);
    RecipientList offline = allSigners();
    std::erase_if(offline, [&](const auto& signer) {
        return !signer->hasOfflineSigningHash() || !isInTurn(*signer, currentRoutingOrder) ||
               !hasTabs(*signer);
    });
    return offline;
}

std::shared_ptr<NVMRecipients> NVMEnvelopeTemplate::signedRecipients() const {
    RecipientList signers = allSigners();
    std::erase_if(signers, [&](const auto& signer) {
        return !signer->hasOfflineSigningHash() || !signer->signedDateTime ||
               signer->routingOrder.value_or(0) > static_cast<double>(currentRoutingOrder) ||
               signer->status == kStatusCompleted;
    });
    return recipientsOf(signers);
}

std::shared_ptr<NVMRecipients> NVMEnvelopeTemplate::unsignedRecipients() const {
    RecipientList signers = allOfflineRecipientsInCurrentRoutingOrder();
    std::erase_if(signers, [](const auto& signer) { return signer->signedDateTime.has_value(); });
    return recipientsOf(signers);
}

bool NVMEnvelopeTemplate::isRemoteEnvelopeSignedByAtLeastOneSignerInCurrentSession() const {
    return isAvailableRemotely() && !signedRecipients()->allSigners().empty();
}

} // namespace norvane
