#include "src/model/CustomFieldMerge.h"

#include <norvane/model/NVMEnvelopeDefaults.h>

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

void NVMEnvelopeDefinition::updateSubjectAndNoteForEnvelope(const NVMEnvelopeDefaults& defaults) {
    if (defaults.emailSubject) emailSubject = defaults.emailSubject;
    if (defaults.emailBlurb) emailBlurb = defaults.emailBlurb;
}

} // namespace norvane
