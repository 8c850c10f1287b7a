#include <norvane/sdk/Errors.h>
#include <norvane/store/NVMTemplatesMigrationHelper.h>
#include <norvane/store/ObjectStore.h>
#include <norvane/templates/NVMTemplatesHandler.h>
#include <norvane/templates/TemplateRules.h>

#include <atomic>
#include <limits>

namespace norvane {
namespace {

std::atomic<std::uint64_t> storeLevel{1};

/// The first fault that a list of rules finds.
template <class... Rules>
bool passes(const NVESEnvelopeTemplate& envelopeTemplate, Failure* error, Rules... rules) {
    Failure fault;
    const bool isFaulty = ((fault = rules(envelopeTemplate), fault.has_value()) || ...);
    if (isFaulty && error) *error = std::move(fault);
    return !isFaulty;
}

Failure anyFreeFormSigner(const NVESEnvelopeTemplate& envelopeTemplate) {
    if (!hasFreeFormSigners(envelopeTemplate)) return std::nullopt;
    return NVM_errorCacheTemplateHasUnspportedFreeFormSigner();
}

} // namespace

Failure NVMTemplatesHandler::setup() {
    NVMTemplatesMigrationHelper::performMigrationForStoreFileName(std::string(ObjectStore::kFileName));
    return ObjectStore::setupDefaultStore();
}

void NVMTemplatesHandler::setLoggingLevel(std::uint64_t level) {
    const bool isKnown = level == 3 || level == std::numeric_limits<std::uint64_t>::max();
    storeLevel = isKnown ? level : 1;
}

std::uint64_t NVMTemplatesHandler::storeLoggingLevel() { return storeLevel; }

bool NVMTemplatesHandler::canCacheEnvelopeTemplate(const NVESEnvelopeTemplate& envelopeTemplate,
                                                   Failure* error) {
    return passes(envelopeTemplate, error, anyMissingRootAttributesInTemplate, anyFreeFormSigner,
                  anyInvalidDocumentInTemplate, anyInvalidOfflineRecipientInTemplate);
}

bool NVMTemplatesHandler::canOnlineSignEnvelopeTemplate(const NVESEnvelopeTemplate& envelopeTemplate,
                                                        Failure* error) {
    return passes(envelopeTemplate, error, anyMissingRootAttributesInTemplate, anyFreeFormSigner,
                  anyInvalidDocumentInTemplate, anyInvalidOnlineRecipientInTemplate);
}

} // namespace norvane
