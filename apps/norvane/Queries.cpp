#include "Queries.h"

#include "DefaultsFile.h"
#include "TextFile.h"

#include <norvane/model/NVMTemplateRecipient.h>
#include <norvane/model/mapping/EnvelopeJson.h>
#include <norvane/platform/Platform.h>
#include <norvane/templates/NVMTemplateUtility.h>

#include <algorithm>

namespace norvane::cli {

namespace {

template <class List>
Array idsOfRecipients(const List& recipients) {
    Array ids;
    for (const auto& recipient : recipients)
        ids.push_back(recipient->recipientId);
    return ids;
}

template <class T>
Array idsOfRecipients(const field::List<T>& recipients) {
    return recipients ? idsOfRecipients(*recipients) : Array();
}

Dictionary idsByKind(const NVMRecipients& recipients) {
    return {{"inPersonSigners", idsOfRecipients(recipients.inPersonSigners)},
            {"signers", idsOfRecipients(recipients.signers)}};
}

Value idsOfTabs(const std::optional<TabList>& tabs) {
    if (!tabs) return {};
    Array ids;
    for (const auto& tab : *tabs)
        ids.push_back(tab->tabId);
    return ids;
}

const NVMRecipients& recipientsOf(const NVMEnvelopeDefinition& envelope) {
    static const NVMRecipients none;
    return envelope.recipients ? *envelope.recipients : none;
}

using RecipientQuestion = Value (*)(NVMEnvelopeDefinition&, const std::shared_ptr<NVMRecipient>&);

/// A question about one recipient, whom the argument names.
template <RecipientQuestion QUESTION>
Result<Value> ofRecipient(NVMEnvelopeDefinition& envelope, const std::string& id) {
    const auto recipient = envelope.recipientWithId(id);
    if (!recipient)
        return NVMError::make("norvane.command", 0, "The envelope has no recipient \"" + id + "\".",
                              "RECIPIENT_UNKNOWN");
    return QUESTION(envelope, recipient);
}

Value unsupportedTabTypes(NVMEnvelopeDefinition&, const std::shared_ptr<NVMRecipient>& recipient) {
    auto names = NVMTabs::unsupportedTabTypes(recipient->signerTabs().get());
    std::sort(names.begin(), names.end());
    return Array(names.begin(), names.end());
}

Result<Value> assignLabelsAndIds(NVMEnvelopeDefinition& envelope, const std::string& argument) {
    envelope.assignLabelsAndIDsToTabsWithForceAssign(argument == "force");
    Array assigned;
    for (const auto& signer : envelope.allSigners())
        for (const auto& tab : envelope.tagsForSigner(signer).value_or(TabList()))
            assigned.push_back(Array{tab->tabId, tab->tabLabel});
    return Value(std::move(assigned));
}

Result<Value> templateRecipients(NVMEnvelopeDefinition& envelope, const std::string&) {
    Array views;
    for (const auto& view : NVMTemplateUtility::templateRecipientsFromNVMEnvelopeTemplate(envelope))
        views.push_back(valuesFromDomainRecord(NVMTemplateRecipient::type(), view.get()));
    return Value(std::move(views));
}

Result<Value> applyDefaults(NVMEnvelopeDefinition& envelope, const std::string& file) {
    const auto text = readTextFile(file);
    if (!text) return text.error();
    const auto defaults = defaultsFromJson(*text, "");
    if (!defaults) return defaults.error();
    Array posted;
    const auto observer = Platform::current().notifications->addObserver(
        "", [&](const Notification& notification) { posted.push_back(notification.name); });
    const Failure failure = defaults->applyTo(envelope);
    return Value(Dictionary{{"ok", !failure},
                            {"error", failure ? Value(failure->failureReason()) : Value()},
                            {"envelope", valuesFromEnvelope(envelope)},
                            {"notifications", std::move(posted)}});
}

using Envelope = NVMEnvelopeDefinition;
using Recipient = std::shared_ptr<NVMRecipient>;

constexpr Query kQueries[] = {
    {"allRecipients", QueryArgument::None, "",
     [](Envelope& envelope, const std::string&) -> Result<Value> {
         return Value(idsOfRecipients(recipientsOf(envelope).allRecipients()));
     }},
    {"allSigners", QueryArgument::None, "",
     [](Envelope& envelope, const std::string&) -> Result<Value> {
         return Value(idsOfRecipients(envelope.allSigners()));
     }},
    {"recipientWithRoleName", QueryArgument::Required, "NAME",
     [](Envelope& envelope, const std::string& name) -> Result<Value> {
         const auto recipient = recipientsOf(envelope).recipientWithRoleName(name);
         return recipient ? Value(recipient->recipientId) : Value();
     }},
    {"incompleteLocalSigners", QueryArgument::None, "",
     [](Envelope& envelope, const std::string&) -> Result<Value> {
         return Value(idsOfRecipients(envelope.incompleteLocalSigners()));
     }},
    {"allOfflineRecipientsInCurrentRoutingOrder", QueryArgument::None, "",
     [](Envelope& envelope, const std::string&) -> Result<Value> {
         return Value(idsOfRecipients(envelope.allOfflineRecipientsInCurrentRoutingOrder()));
     }},
    {"signedRecipients", QueryArgument::None, "",
     [](Envelope& envelope, const std::string&) -> Result<Value> {
         return Value(idsByKind(*envelope.signedRecipients()));
     }},
    {"unsignedRecipients", QueryArgument::None, "",
     [](Envelope& envelope, const std::string&) -> Result<Value> {
         return Value(idsByKind(*envelope.unsignedRecipients()));
     }},
    {"tagsForSigner", QueryArgument::Required, "RECIPIENT",
     ofRecipient<[](Envelope& envelope, const Recipient& recipient) {
         return idsOfTabs(envelope.tagsForSigner(recipient));
     }>},
    {"remainingTagsIncludingOptional", QueryArgument::Required, "RECIPIENT",
     ofRecipient<[](Envelope& envelope, const Recipient& recipient) {
         return idsOfTabs(envelope.remainingTagsIncludingOptionalForRecipient(recipient));
     }>},
    {"remainingRequiredTags", QueryArgument::Required, "RECIPIENT",
     ofRecipient<[](Envelope& envelope, const Recipient& recipient) {
         return idsOfTabs(envelope.remainingRequiredTagsForRecipient(recipient));
     }>},
    {"requiredNavigableTags", QueryArgument::Required, "RECIPIENT",
     ofRecipient<[](Envelope& envelope, const Recipient& recipient) {
         return idsOfTabs(envelope.requiredNavigableTagsForRecipient(recipient));
     }>},
    {"unsupportedTabTypes", QueryArgument::Required, "RECIPIENT", ofRecipient<unsupportedTabTypes>},
    {"isSelfSign", QueryArgument::None, "",
     [](Envelope& envelope, const std::string&) -> Result<Value> { return Value(envelope.isSelfSign()); }},
    {"allRecipientsHaveCompletedOrDeclined", QueryArgument::None, "",
     [](Envelope& envelope, const std::string&) -> Result<Value> {
         return Value(recipientsOf(envelope).allRecipientsHaveCompletedOrDeclined());
     }},
    {"assignLabelsAndIDs", QueryArgument::Optional, "force", assignLabelsAndIds},
    {"templateRecipients", QueryArgument::None, "", templateRecipients},
    {"applyDefaults", QueryArgument::Required, "DEFAULTS.json", applyDefaults},
};

} // namespace

std::span<const Query> queries() { return kQueries; }

} // namespace norvane::cli
