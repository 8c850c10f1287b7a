#include <norvane/model/NVMEnvelopeDefaults.h>
#include <norvane/signing/OfflineEnvelope.h>
#include <norvane/templates/NVMTemplatesManager.h>
#include <norvane/templates/TemplateRules.h>

namespace norvane {

Result<std::shared_ptr<NVMEnvelopeDefinition>>
NVMTemplatesManager::createOfflineEnvelope(const std::string& templateId,
                                           const NVMEnvelopeDefaults& envelopeDefaults) const {
    if (const auto stored = cachedTemplateWithId(templateId, false)) {
        if (auto error = anyCustomFieldWithoutValue(*stored, envelopeDefaults.customFields.get()))
            return *error;
    }
    return offlineEnvelopeFromTemplate(templateId, envelopeDefaults);
}

} // namespace norvane
