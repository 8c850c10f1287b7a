#include <norvane/model/NVMEnvelopeTemplate.h>
#include <norvane/platform/Clock.h>
#include <norvane/sdk/Errors.h>
#include <norvane/sdk/SessionState.h>
#include <norvane/templates/NVMTemplatesManager.h>
#include <norvane/templates/TemplateRules.h>

namespace norvane {
namespace {

/// Why an operation on one template is refused.
Failure refusal(const std::string& templateId) {
    if (!isUuidString(templateId)) return NVM_errorInvalidInput();
    if (!NVM_isSetupAndLoginSuccessful()) return NVM_errorSetupIncomplete();
    return std::nullopt;
}

} // namespace

void NVMTemplatesManagerDelegate::templatesManagerDidStartCachingTemplate(const std::string&) {}

void NVMTemplatesManagerDelegate::templatesManagerDidEndCachingTemplate(const std::string&, const Failure&) {}

NVMTemplateCacheState NVMTemplatesManager::cacheStateOfTemplateWithId(const std::string& templateId) const {
    if (refusal(templateId)) return NVMTemplateCacheStateNone;
    return NVMTemplatesHandler::cacheStateOfTemplateId(templateId);
}

void NVMTemplatesManager::cacheTemplateWithId(const std::string& templateId, Completion completion) const {
    if (auto error = refusal(templateId)) {
        if (completion) completion(std::move(error));
        return;
    }
    NVMTemplatesHandler::cacheTemplateWithId(
        templateId,
        [&] {
            if (const auto delegate = delegate_.lock()) {
                delegate->templatesManagerDidStartCachingTemplate(templateId);
            }
        },
        [templateId, weakDelegate = delegate_, completion = std::move(completion)](Failure error) {
            if (const auto delegate = weakDelegate.lock()) {
                delegate->templatesManagerDidEndCachingTemplate(templateId, error);
            }
            if (completion) completion(std::move(error));
        });
}

std::shared_ptr<NVMEnvelopeTemplate> NVMTemplatesManager::cachedTemplateWithId(const std::string& templateId,
                                                                               bool includePdfs) const {
    if (refusal(templateId)) return nullptr;
    return NVMTemplatesHandler::cachedTemplateWithId(templateId, includePdfs);
}

std::vector<std::shared_ptr<NVMEnvelopeTemplate>> NVMTemplatesManager::cachedTemplates() const {
    if (!NVM_isSetupAndLoginSuccessful()) return {};
    return NVMTemplatesHandler::cachedTemplates();
}

std::vector<std::string> NVMTemplatesManager::cachedTemplateIds() const {
    if (!NVM_isSetupAndLoginSuccessful()) return {};
    return NVMTemplatesHandler::cachedTemplateIds();
}

std::size_t NVMTemplatesManager::cachedTemplateCount() const {
    return NVM_isSetupAndLoginSuccessful() ? NVMTemplatesHandler::cachedTemplateCount() : 0;
}

Failure NVMTemplatesManager::removeCachedTemplateWithId(const std::string& templateId) const {
    if (auto error = refusal(templateId)) return error;
    return NVMTemplatesHandler::removeCachedTemplateWithId(templateId);
}

Failure NVMTemplatesManager::removeCachedTemplates() const {
    if (!NVM_isSetupAndLoginSuccessful()) return NVM_errorSetupIncomplete();
    return NVMTemplatesHandler::removeCachedTemplates();
}

bool NVMTemplatesManager::canCacheEnvelopeTemplate(const NVESEnvelopeTemplate& envelopeTemplate,
                                                   Failure* error) const {
    Failure fault;
    if (!NVM_isSetupAndLoginSuccessful()) fault = NVM_errorSetupIncomplete();
    if (!fault) fault = anyMissingRootAttributesInTemplate(envelopeTemplate);
    if (!fault) fault = anyInvalidRoleForCaching(envelopeTemplate);
    if (!fault) NVMTemplatesHandler::canCacheEnvelopeTemplate(envelopeTemplate, &fault);
    const bool isFaulty = fault.has_value();
    if (isFaulty && error) *error = std::move(fault);
    return !isFaulty;
}

} // namespace norvane
