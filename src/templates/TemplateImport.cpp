#include "src/templates/TemplateImport.h"

#include <norvane/api/NVESTemplates.h>
#include <norvane/model/NVMRecipientType.h>
#include <norvane/model/NVMTabType.h>
#include <norvane/platform/DateFormat.h>
#include <norvane/platform/Platform.h>
#include <norvane/store/NVMCDTemplates.h>

#include <charconv>

namespace norvane {
namespace {

/// Decimal text, or a Boolean's.
field::Number numberOf(const field::Text& text) {
    if (text == "true") return 1;
    if (text == "false") return 0;
    if (!text) return std::nullopt;
    double number = 0;
    const char* end = text->data() + text->size();
    const auto [stop, code] = std::from_chars(text->data(), end, number);
    return code == std::errc() && stop == end ? field::Number(number) : std::nullopt;
}

void importScalar(const Field& from, const void* source, const Field& to, void* target) {
    const Value value = valueOf(from, source);
    const field::Text text = value.stringValue();
    switch (to.kind) {
    case FieldKind::Text:
        to.as<field::Text>(target) = text;
        break;
    case FieldKind::Number:
        to.as<field::Number>(target) = numberOf(text);
        break;
    case FieldKind::Bool:
        to.as<bool>(target) = value.boolValue();
        break;
    case FieldKind::DateTime:
        to.as<field::Date>(target) = text ? parseIso8601(*text) : std::nullopt;
        break;
    case FieldKind::TextList:
        if (from.kind == FieldKind::TextList)
            to.as<field::TextList>(target) = from.as<field::TextList>(source);
        break;
    default:
        break;
    }
}

void importFrame(const RecordType& type, const void* wireTab, NVMCDTab& tab) {
    const auto number = [&](std::string_view name) -> field::Number {
        const Field* found = type.find(name);
        return found ? numberOf(valueOf(*found, wireTab).stringValue()) : std::nullopt;
    };
    tab.frameEntity = std::make_shared<NVMCDFrame>();
    tab.frameEntity->originX = number("xPosition");
    tab.frameEntity->originY = number("yPosition");
    tab.frameEntity->width = number("width");
    tab.frameEntity->height = number("height");
    if (tab.tabId.value_or("").empty()) tab.tabId = Platform::current().random->uuidString();
}

/// Sets the fields of a stored record from the like-named ones of a wire record, and what they hold likewise.
void importRecord(const RecordType& fromType, const void* from, const RecordType& toType, void* to) {
    for (const Field& target : toType.fields()) {
        const Field* source = fromType.find(target.name);
        if (!source) continue;
        if (!target.reference) {
            importScalar(*source, from, target, to);
        } else if (source->kind == target.kind && source->reference->present(source->in(from))) {
            const ReferenceAccess& elements = *source->reference;
            const std::size_t count = elements.size(source->in(from));
            target.reference->reset(target.in(to), count);
            for (std::size_t i = 0; i < count; ++i) {
                importRecord(elements.type(), elements.at(source->in(from), i), target.reference->type(),
                             target.reference->emplace(target.in(to)));
            }
        }
    }
    if (&toType == &NVMCDTab::type()) importFrame(fromType, from, *static_cast<NVMCDTab*>(to));
}

template <class R>
void number(const field::List<R>& list, field::Number R::*member, std::int64_t kind) {
    if (!list) return;
    for (const auto& element : *list)
        (*element).*member = static_cast<double>(kind);
}

void numberTabs(NVMCDTabs& tabs) {
    number(tabs.signHereTabs, &NVMCDTab::type_, NVMTabTypeSignHere);
    number(tabs.initialHereTabs, &NVMCDTab::type_, NVMTabTypeInitialHere);
    number(tabs.textTabs, &NVMCDTab::type_, NVMTabTypeText);
    number(tabs.checkboxTabs, &NVMCDTab::type_, NVMTabTypeCheckbox);
    number(tabs.companyTabs, &NVMCDTab::type_, NVMTabTypeCompany);
    number(tabs.titleTabs, &NVMCDTab::type_, NVMTabTypeTitle);
    number(tabs.fullNameTabs, &NVMCDTab::type_, NVMTabTypeFullName);
    number(tabs.dateSignedTabs, &NVMCDTab::type_, NVMTabTypeDateSigned);
    number(tabs.formulaTabs, &NVMCDTab::type_, NVMTabTypeFormula);
    if (!tabs.radioGroupTabs) return;
    for (const auto& group : *tabs.radioGroupTabs) {
        number(group->radios, &NVMCDTab::type_, NVMTabTypeRadio);
        if (!group->radios) continue;
        for (const auto& radio : *group->radios) {
            radio->documentId = group->documentId;
            radio->recipientId = group->recipientId;
        }
    }
}

void numberRecipients(NVMCDRecipients& recipients) {
    const std::pair<const field::List<NVMCDRecipient>&, NVMRecipientType> lists[] = {
        {recipients.agents, NVMRecipientTypeAgent},
        {recipients.carbonCopies, NVMRecipientTypeCarbonCopy},
        {recipients.certifiedDeliveries, NVMRecipientTypeCertifiedDelivery},
        {recipients.editors, NVMRecipientTypeEditor},
        {recipients.intermediaries, NVMRecipientTypeIntermediary},
        {recipients.inPersonSigners, NVMRecipientTypeInPersonSigner},
        {recipients.signers, NVMRecipientTypeSigner},
    };
    for (const auto& [list, kind] : lists) {
        number(list, &NVMCDRecipient::recipientType, kind);
        if (!list) continue;
        for (const auto& recipient : *list) {
            if (recipient->tabs) numberTabs(*recipient->tabs);
        }
    }
}

} // namespace

std::shared_ptr<NVMCDEnvelopeTemplate> importedTemplate(const NVESEnvelopeTemplate& wire) {
    auto stored = std::make_shared<NVMCDEnvelopeTemplate>();
    importRecord(NVESEnvelopeTemplate::type(), &wire, NVMCDEnvelopeTemplate::type(), stored.get());
    if (wire.envelopeTemplateDefinition) {
        stored->envelopeTemplateDefinition->templateDescription =
            wire.envelopeTemplateDefinition->_description;
        stored->templateId = wire.envelopeTemplateDefinition->templateId;
    }
    if (stored->recipients) {
        stored->recipients->templateId = stored->templateId;
        numberRecipients(*stored->recipients);
    }
    return stored;
}

} // namespace norvane
