#include "src/model/IndependentCopy.h"

#include <norvane/model/NVMEnvelopeTemplate.h>
#include <norvane/sdk/NVMCredentials.h>

#include <algorithm>
#include <unordered_set>

namespace norvane {

NORVANE_TABLE(NVMEnvelopeTemplate, NVM_ENVELOPE_TEMPLATE_FIELDS)

namespace {

/// The first of each object stays.
template <class T>
std::vector<std::shared_ptr<T>> withoutDuplicates(std::vector<std::shared_ptr<T>> list) {
    std::unordered_set<const T*> seen;
    std::erase_if(list, [&](const auto& item) { return !seen.insert(item.get()).second; });
    return list;
}

template <class T>
RecipientList sortedByRoutingOrder(const field::List<T>& list) {
    if (!list) return {};
    RecipientList sorted(list->begin(), list->end());
    std::stable_sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) {
        return a->routingOrder.value_or(0) < b->routingOrder.value_or(0);
    });
    return withoutDuplicates(std::move(sorted));
}

} // namespace

NVMEnvelopeTemplate::NVMEnvelopeTemplate(const NVMEnvelopeTemplate& envelope, bool includePdfs) {
    independentCopy().apply(envelope, *this);
    if (includePdfs) return;
    for (const auto& document : NVMEnvelopeTemplate::allDocuments()) // the object is not yet of a class below
        document->pdf.reset();
    if (combinedDocument) combinedDocument->pdf.reset();
}

bool NVMEnvelopeTemplate::isSelfSign() const {
    const auto signers = allSigners();
    if (signers.size() != 1) return false;
    const auto account = NVMCredentials::primaryCredentials();
    return account && signers.front()->matchesNameAndEmailOfAccount(*account);
}

DocumentList NVMEnvelopeTemplate::allDocuments() const {
    return withoutDuplicates(documents.value_or(DocumentList()));
}

std::optional<RecipientList> NVMEnvelopeTemplate::recipientsOfType(NVMRecipientType recipientType) const {
    auto list = recipients ? recipients->recipientsOfType(recipientType) : std::nullopt;
    if (list) list = withoutDuplicates(*std::move(list));
    return list;
}

RecipientList NVMEnvelopeTemplate::allSigners() const {
    if (!recipients) return {};
    RecipientList all = sortedByRoutingOrder(recipients->signers);
    const RecipientList inPerson = sortedByRoutingOrder(recipients->inPersonSigners);
    all.insert(all.end(), inPerson.begin(), inPerson.end());
    return all;
}

std::shared_ptr<NVMRecipient>
NVMEnvelopeTemplate::recipientWithId(const std::optional<std::string>& id) const {
    return recipients ? recipients->recipientWithId(id) : nullptr;
}

std::optional<TabList> NVMEnvelopeTemplate::tagsForSigner(const std::shared_ptr<NVMRecipient>& signer) const {
    const auto tabs = signer ? signer->signerTabs() : nullptr;
    if (!tabs) return std::nullopt;
    return tabs->allTabs();
}

std::optional<RadioGroupList>
NVMEnvelopeTemplate::radioGroupsForSigner(const std::shared_ptr<NVMRecipient>& signer) const {
    const auto tabs = signer ? signer->signerTabs() : nullptr;
    return tabs ? tabs->radioGroupTabs : std::nullopt;
}

TabList NVMEnvelopeTemplate::allTags() const {
    TabList all;
    if (!recipients) return all;
    const auto appendTagsOf = [&](const auto& list) {
        if (!list) return;
        for (const auto& signer : *list)
            if (const auto tags = tagsForSigner(signer)) all.insert(all.end(), tags->begin(), tags->end());
    };
    appendTagsOf(recipients->signers);
    appendTagsOf(recipients->inPersonSigners);
    return all;
}

TabList NVMEnvelopeTemplate::tagsForDocument(const NVMDocument& document) const {
    return tagsForDocumentId(document.documentId);
}

TabList NVMEnvelopeTemplate::tagsForDocumentId(const std::optional<std::string>& documentId) const {
    if (!documentId) return {};
    TabList tags = allTags();
    std::erase_if(tags, [&](const auto& tab) { return tab->documentId != documentId; });
    return tags;
}

std::shared_ptr<NVMRadioGroup>
NVMEnvelopeTemplate::radioGroupWith(const NVMRadio& radio,
                                    const std::shared_ptr<NVMRecipient>& forRecipient) const {
    const auto groups = radioGroupsForSigner(forRecipient);
    if (!groups) return nullptr;
    for (const auto& group : *groups) {
        if (!group->radios) continue;
        for (const auto& candidate : *group->radios)
            if (candidate->tabIdIdentity == radio.tabIdIdentity && candidate->tabId == radio.tabId)
                return group;
    }
    return nullptr;
}

void NVMEnvelopeTemplate::setSubjectIfNeeded() {
    if (!emailSubject.value_or("").empty() || !documents || documents->empty() || status != kStatusSent)
        return;
    emailSubject = documents->front()->name;
}

} // namespace norvane
