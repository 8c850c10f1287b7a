#include "src/model/RecipientKinds.h"
#include "src/model/TabKinds.h"

#include <norvane/model/mapping/EnvelopeJson.h>
#include <norvane/platform/Json.h>
#include <norvane/record/RecordValue.h>

#include <algorithm>

namespace norvane {
namespace {

void settleKinds(const NVMTabs& tabs) {
    for (const TabKind& kind : tabKinds()) {
        if (!kind.append) continue;
        TabList list;
        kind.append(tabs, list);
        for (const auto& tab : list)
            if (tab->tabType != NVMTabTypeUnsupported) tab->tabType = kind.type;
    }
    if (!tabs.radioGroupTabs) return;
    for (const auto& group : *tabs.radioGroupTabs)
        group->adoptRadios();
}

void settleKinds(const NVMRecipients& recipients) {
    for (const RecipientKind& kind : recipientKinds()) {
        const auto list = kind.list(recipients);
        if (!list) continue;
        for (const auto& recipient : *list) {
            recipient->recipientType = kind.type;
            if (const auto tabs = recipient->signerTabs()) settleKinds(*tabs);
        }
    }
}

bool isSetOf(const RecordType& type) {
    const RecordType* const elements[] = {&NVMNameValue::type(), &NVMTextCustomField::type(),
                                          &NVMListCustomField::type(), &NVMBCCEmailAddress::type()};
    return std::find(std::begin(elements), std::end(elements), &type) != std::end(elements);
}

} // namespace

Result<std::shared_ptr<NVMEnvelopeDefinition>> envelopeFromValues(const Dictionary& values) {
    auto envelope = std::make_shared<NVMEnvelopeDefinition>();
    if (Failure failure = fillRecord(NVMEnvelopeDefinition::type(), envelope.get(), values))
        return *std::move(failure);
    if (envelope->recipients) settleKinds(*envelope->recipients);
    return envelope;
}

Result<std::shared_ptr<NVMEnvelopeDefinition>> envelopeFromJson(std::string_view json) {
    const auto document = parseJson(json);
    if (!document) return document.error();
    if (!document->isDictionary())
        return NVMError::make(std::string(kRecordErrorDomain), 0, "An envelope must be an object.",
                              "RECORD_FIELD_INVALID");
    return envelopeFromValues(*document->asDictionary());
}

Dictionary valuesFromDomainRecord(const RecordType& type, const void* record) {
    return valuesOfRecord(type, record, isSetOf);
}

Dictionary valuesFromEnvelope(const NVMEnvelopeTemplate& envelope) {
    return valuesFromDomainRecord(NVMEnvelopeTemplate::type(), &envelope);
}

std::string jsonFromEnvelope(const NVMEnvelopeTemplate& envelope) {
    return writeJson(valuesFromEnvelope(envelope));
}

} // namespace norvane
