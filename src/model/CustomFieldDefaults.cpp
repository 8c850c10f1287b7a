#include <norvane/model/NVMEnvelopeDefinition.h>

#include <algorithm>
#include <map>

// The part of an envelope that takes the host's custom fields.

namespace norvane {
namespace {

void mergeChoices(const NVMTextCustomField&, NVMTextCustomField&) {}
void mergeChoices(const NVMListCustomField& given, NVMListCustomField& field) {
    field.listItems = given.listItems;
}

/// Makes the names of the list unique (a later field replaces an earlier one) and merges the given fields in.
template <class T>
void mergeFields(const field::List<T>& given, field::List<T>& fields) {
    std::map<std::optional<std::string>, std::shared_ptr<T>> byName;
    if (fields)
        for (const auto& field : *fields)
            byName[field->name] = field;
    if (given) {
        for (const auto& source : *given) {
            auto& field = byName[source->name];
            if (!field) {
                field = source;
                continue;
            }
            field->value = source->value;
            field->show = source->show;
            field->required = source->required;
            if (source->configurationType) field->configurationType = source->configurationType;
            mergeChoices(*source, *field);
        }
    }
    fields.emplace();
    for (auto& [name, field] : byName)
        fields->push_back(std::move(field));
}

} // namespace

void NVMEnvelopeDefinition::applyCustomFields(const std::shared_ptr<NVMCustomFields>& given) {
    if (!given) return;
    if (!customFields) {
        customFields = given;
        return;
    }
    mergeFields(given->textCustomFields, customFields->textCustomFields);
    mergeFields(given->listCustomFields, customFields->listCustomFields);
}

void NVMEnvelopeDefinition::updateSubjectAndNote(const std::optional<std::string>& subject,
                                                 const std::optional<std::string>& blurb) {
    if (subject) emailSubject = subject;
    if (blurb) emailBlurb = blurb;
}

} // namespace norvane
