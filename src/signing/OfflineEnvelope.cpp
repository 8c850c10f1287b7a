#include <norvane/platform/Clock.h>
#include <norvane/platform/TextCompare.h>
#include <norvane/sdk/Errors.h>
#include <norvane/sdk/SessionState.h>
#include <norvane/signing/NVMNativeSigningEnvelopeHandler.h>
#include <norvane/signing/OfflineEnvelope.h>
#include <norvane/signing/SigningNotifications.h>
#include <norvane/templates/NVMTemplatesHandler.h>

#include <algorithm>

namespace norvane {

namespace {

Failure applyDefaults(NVMEnvelopeDefinition& envelope, const NVMEnvelopeDefaults& defaults) {
    Failure invalid; // Stays absent where there is nothing to check.
    if (!defaults.hasValidEnvelopeRecipients(invalid) && invalid) return invalid;
    return defaults.applyTo(envelope);
}

/// Signing begins with the first who are to sign, whatever the template says of a turn.
void setFirstRoutingOrder(NVMEnvelopeDefinition& envelope) {
    if (envelope.currentRoutingOrder != 0 || !envelope.recipients) return;
    std::optional<double> first;
    for (const auto& signer : envelope.recipients->allSigners())
        if (signer->routingOrder && (!first || *signer->routingOrder < *first)) first = *signer->routingOrder;
    envelope.currentRoutingOrder = static_cast<std::int64_t>(first.value_or(0));
}

} // namespace

Result<std::shared_ptr<NVMEnvelopeDefinition>>
offlineEnvelopeFromTemplate(const std::string& templateId, const NVMEnvelopeDefaults& defaults) {
    if (!isUuidString(templateId)) return NVM_errorInvalidInput();
    if (!NVM_isSetupAndLoginSuccessful()) return NVM_errorSetupIncomplete();
    auto envelope = NVMTemplatesHandler::createEnvelopeFromTemplateWithId(templateId, {}, 0, true);
    if (!envelope) return envelope.error();
    if (Failure failure = applyDefaults(**envelope, defaults)) {
        NVMNativeSigningEnvelopeHandler(*envelope).clearEnvelope();
        return *std::move(failure);
    }
    setFirstRoutingOrder(**envelope);
    validateTabsValuesWithTemplateId(**envelope, templateId);
    return envelope;
}

void validateTabsValuesWithTemplateId(NVMEnvelopeDefinition& envelope,
                                      const std::optional<std::string>& templateId) {
    std::vector<std::string> labels;
    for (const auto& tab : envelope.allTags()) {
        const bool hasValue = !isBlank(tab->value);
        if (!tab->nvm_required() || !tab->nvm_locked() || hasValue) continue;
        const bool hasLabel = tab->tabLabel && !tab->tabLabel->empty();
        const std::string label = hasLabel ? *tab->tabLabel : tab->tabId.value_or("");
        if (std::find(labels.begin(), labels.end(), label) == labels.end()) labels.push_back(label);
        if (envelope.isReadonlyAndRequiredTextTabsToEditableConversionPending()) tab->nvm_setLocked(false);
    }
    if (labels.empty()) return;
    nvm_notifyFoundReadonlyAndRequiredTabsWithInvalidDefaults(
        NVM_errorEnvelopeHasInvalidDefaultsForTabLabels(labels), envelope.envelopeId, templateId);
}

} // namespace norvane
