#include <norvane/signing/OfflineEnvelope.h>
#include <norvane/templates/NVMTemplatesManager.h>

namespace norvane {

Result<std::shared_ptr<NVMEnvelopeDefinition>>
NVMTemplatesManager::createOfflineEnvelope(const std::string& templateId,
                                           const NVMEnvelopeDefaults& envelopeDefaults) const {
    return offlineEnvelopeFromTemplate(templateId, envelopeDefaults);
}

} // namespace norvane
