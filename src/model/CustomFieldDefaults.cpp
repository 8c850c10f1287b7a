#include "src/model/CustomFieldMerge.h"

#include <norvane/model/NVMEnvelopeDefinition.h>

// The part of an envelope that takes the host's custom fields and mail texts.

namespace norvane {

void NVMEnvelopeDefinition::applyCustomFields(const std::shared_ptr<NVMCustomFields>& given) {
    if (!given) return;
    if (!customFields) {
        customFields = given;
        return;
    }
    mergeCustomFields(given->textCustomFields, customFields->textCustomFields);
    mergeCustomFields(given->listCustomFields, customFields->listCustomFields);
}

void NVMEnvelopeDefinition::updateSubjectAndNote(const std::optional<std::string>& subject,
                                                 const std::optional<std::string>& blurb) {
    if (subject) emailSubject = subject;
    if (blurb) emailBlurb = blurb;
}

} // namespace norvane
