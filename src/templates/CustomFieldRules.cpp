#include <norvane/api/NVESEnvelopes.h>
#include <norvane/api/NVESTemplates.h>
#include <norvane/model/NVMEnvelopeTemplate.h>
#include <norvane/sdk/Errors.h>
#include <norvane/templates/TemplateRules.h>

namespace norvane {
namespace {

bool isRequired(bool required) { return required; }
bool isRequired(const std::optional<std::string>& required) { return Value(required).boolValue(); }

template <class R>
bool givesValue(const field::List<R>* given, const std::optional<std::string>& name) {
    if (!given || !*given) return false;
    for (const auto& field : **given) {
        if (field->name == name && !field->value.value_or("").empty()) return true;
    }
    return false;
}

/// Whether a required field of the template has no value, and is given none.
template <class R, class Given>
bool lacksValue(const field::List<R>& fields, const field::List<Given>* given) {
    if (!fields) return false;
    for (const auto& field : *fields) {
        if (isRequired(field->required) && field->value.value_or("").empty() &&
            !givesValue(given, field->name)) {
            return true;
        }
    }
    return false;
}

template <class CustomFields>
std::optional<NVMError> check(const std::shared_ptr<CustomFields>& fields, const NVMCustomFields* given) {
    if (!fields) return std::nullopt;
    if (lacksValue(fields->textCustomFields, given ? &given->textCustomFields : nullptr)) {
        return NVM_errorTemplateHasInvalidTextCustomFields();
    }
    if (lacksValue(fields->listCustomFields, given ? &given->listCustomFields : nullptr)) {
        return NVM_errorTemplateHasInvalidListCustomFields();
    }
    return std::nullopt;
}

} // namespace

std::optional<NVMError> anyCustomFieldWithoutValue(const NVMEnvelopeTemplate& envelopeTemplate,
                                                   const NVMCustomFields* userDefined) {
    return check(envelopeTemplate.customFields, userDefined);
}

std::optional<NVMError> anyCustomFieldWithoutValue(const NVESEnvelopeTemplate& envelopeTemplate,
                                                   const NVMCustomFields* userDefined) {
    return check(envelopeTemplate.customFields, userDefined);
}

} // namespace norvane
