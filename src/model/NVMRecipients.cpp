#include "src/model/IndependentCopy.h"
#include "src/model/RecipientKinds.h"

#include <norvane/model/NVMRecipients.h>
#include <norvane/platform/Platform.h>
#include <norvane/platform/TextCompare.h>
#include <norvane/sdk/Configuration.h>

#include <algorithm>

namespace norvane {

NORVANE_TABLE(NVMRecipients, NVM_RECIPIENTS_FIELDS)

namespace {

template <class T>
void append(RecipientList& to, const field::List<T>& list) {
    if (list) to.insert(to.end(), list->begin(), list->end());
}

bool sameRole(const std::optional<std::string>& a, const std::optional<std::string>& b) {
    if (!a || !b) return false;
    if (!configuredValueForSetupKey(NVM_SETUP_RECIPIENT_DEFAULTS_CASE_INSENSITIVELY_MATCH_ROLE_NAME))
        return a == b;
    return foldedEqual(trimmed(*a), trimmed(*b), Diacritics::Ignore);
}

} // namespace

std::shared_ptr<NVMRecipients> NVMRecipients::withRecipients(const NVMRecipients& recipients) {
    return independentCopy().make<NVMRecipients>(recipients);
}

RecipientList NVMRecipients::allRecipients() const {
    RecipientList all;
    for (const RecipientKind& kind : recipientKinds())
        if (const auto list = kind.list(*this)) all.insert(all.end(), list->begin(), list->end());
    return all;
}

RecipientList NVMRecipients::allSigners() const {
    RecipientList all;
    append(all, inPersonSigners);
    append(all, signers);
    return all;
}

RecipientList NVMRecipients::allSignersIncludingNeedsToView() const {
    RecipientList all = allSigners();
    append(all, certifiedDeliveries);
    return all;
}

std::optional<RecipientList> NVMRecipients::recipientsOfType(NVMRecipientType recipientType) const {
    const RecipientKind* kind = recipientKindOf(recipientType);
    return kind ? kind->list(*this) : std::nullopt;
}

std::shared_ptr<NVMRecipient> NVMRecipients::recipientWithId(const Text& recipientId) const {
    if (!recipientId) return nullptr;
    const auto all = allRecipients();
    const auto found = std::find_if(
        all.begin(), all.end(), [&](const auto& recipient) { return recipient->recipientId == recipientId; });
    return found == all.end() ? nullptr : *found;
}

std::shared_ptr<NVMRecipient> NVMRecipients::inPersonSignerWithId(const Text& recipientId) const {
    return recipientWithId(recipientId);
}

std::shared_ptr<NVMRecipient> NVMRecipients::recipientWithRoleName(const Text& roleName) const {
    RecipientList matching = allRecipients();
    std::erase_if(matching, [&](const auto& recipient) { return !sameRole(recipient->roleName, roleName); });
    return matching.size() == 1 ? matching.front() : nullptr;
}

RecipientList NVMRecipients::currentRoutingOrderRecipients() const {
    if (!currentRoutingOrder) return {};
    RecipientList current = allRecipients();
    std::erase_if(current,
                  [&](const auto& recipient) { return recipient->routingOrder != currentRoutingOrder; });
    return current;
}

bool NVMRecipients::anyCurrentRecipientsHaveDeclined() const {
    const auto current = currentRoutingOrderRecipients();
    return std::any_of(current.begin(), current.end(),
                       [](const auto& recipient) { return recipient->status == kStatusDeclined; });
}

bool NVMRecipients::allRecipientsHaveCompletedOrDeclined() const {
    const auto all = allRecipients();
    return std::all_of(all.begin(), all.end(),
                       [](const auto& recipient) { return recipient->hasCompletedOrDeclined(); });
}

bool NVMRecipients::addRecipient(const std::shared_ptr<NVMRecipient>& recipient) {
    const auto kinds = recipientKinds();
    return recipient && std::any_of(kinds.begin(), kinds.end(),
                                    [&](const RecipientKind& kind) { return kind.add(*this, recipient); });
}

void NVMRecipients::removeRecipient(const std::shared_ptr<NVMRecipient>& recipient) {
    if (!recipient) return;
    if (const RecipientKind* kind = recipientKindOf(recipient->recipientType))
        kind->remove(*this, *recipient);
}

std::shared_ptr<NVMSigner>
NVMRecipients::signerFromInPersonSigner(const std::shared_ptr<NVMRecipient>& inPersonSigner, const Text& name,
                                        const Text& email) {
    if (!inPersonSigner) return nullptr;
    const auto found =
        std::dynamic_pointer_cast<NVMInPersonSigner>(inPersonSignerWithId(inPersonSigner->recipientId));
    if (!found) return nullptr;

    auto signer = std::make_shared<NVMSigner>();
    copyLikeNamedFields(NVMInPersonSigner::type(), found.get(), NVMSigner::type(), signer.get());
    signer->recipientType = NVMRecipientTypeSigner;
    signer->roleName.reset();
    signer->setNameAndEmail(name, email);
    addRecipient(signer);
    std::erase(*inPersonSigners, found);
    Platform::current().notifications->post({std::string(NVMEnvelopeRecipientsDidChangeNotification),
                                             {},
                                             {{"recipientIds", Array{Value(signer->recipientId)}}}});
    return signer;
}

std::shared_ptr<NVMInPersonSigner>
NVMRecipients::inPersonSignerFromSigner(const std::shared_ptr<NVMSigner>& signer, const Text& hostName,
                                        const Text& hostEmail, const Text& signerName,
                                        const Text& signerEmail) {
    if (!signer) return nullptr;
    auto inPerson = std::make_shared<NVMInPersonSigner>();
    copyLikeNamedFields(NVMSigner::type(), signer.get(), NVMInPersonSigner::type(), inPerson.get());
    inPerson->recipientType = NVMRecipientTypeInPersonSigner;
    inPerson->hostName = hostName;
    inPerson->hostEmail = hostEmail;
    inPerson->signerName = signerName;
    inPerson->signerEmail = signerEmail;
    addRecipient(inPerson);
    if (signers) std::erase(*signers, signer);
    return inPerson;
}

} // namespace norvane
