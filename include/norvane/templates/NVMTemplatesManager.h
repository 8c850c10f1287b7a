#pragma once

#include <norvane/platform/Result.h>
#include <norvane/templates/NVMTemplatesHandler.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace norvane {

struct NVESFolder;
struct NVMEnvelopeDefaults;
struct NVMEnvelopeTemplateDefinition;

/// Told of templates being cached. Calls come on the thread that caches; do nothing by default.
class NVMTemplatesManagerDelegate {
  public:
    virtual ~NVMTemplatesManagerDelegate() = default;
    /// Inside `cacheTemplateWithId`.
    virtual void templatesManagerDidStartCachingTemplate(const std::string& templateId);
    /// Just before the completion, with its error.
    virtual void templatesManagerDidEndCachingTemplate(const std::string& templateId, const Failure& error);
};

/// How names compare in a listing; diacritics never count but for WholeName.
enum class NVMSearchOptions {
    CaseInsensitive, ///< the name contains the text, whatever its case
    CaseSensitive,   ///< the name contains the text exactly
    WholeName,       ///< the name is the text exactly
};

/// The host's way to the account's templates. Any thread may call. Until the kit is set up and signed in,
/// every operation refuses: completions get NVM_errorSetupIncomplete, queries answer that nothing is there.
/// An id that is no UUID is refused with NVM_errorInvalidInput.
class NVMTemplatesManager {
  public:
    using TemplateList = std::vector<std::shared_ptr<NVMEnvelopeTemplateDefinition>>;
    using FolderList = std::vector<std::shared_ptr<NVESFolder>>;
    /// The list, or an error. Runs where the service's answer arrives; a refusal runs inside the call.
    using ListCompletion = std::function<void(std::optional<TemplateList>, Failure)>;
    using FolderCompletion = std::function<void(std::optional<FolderList>, Failure)>;
    using Completion = std::function<void(Failure)>;
    using Predicate = std::function<bool(const NVMEnvelopeTemplateDefinition&)>;

    /// Held weakly.
    void setDelegate(std::weak_ptr<NVMTemplatesManagerDelegate> delegate) { delegate_ = std::move(delegate); }

    // The account's templates on the service, all pages of the listing in the service's order.
    void listTemplatesWithCompletion(ListCompletion completion) const;
    /// Those for which the predicate holds; an empty one holds for all.
    void listTemplatesWithSearchPredicate(Predicate predicate, ListCompletion completion) const;
    void listTemplatesWithFolderId(const std::string& folderId, ListCompletion completion) const;
    void listTemplatesWithTemplateName(const std::string& templateName, NVMSearchOptions searchOptions,
                                       ListCompletion completion) const;
    void listTemplateFoldersWithCompletion(FolderCompletion completion) const;

    // Templates on this device.
    NVMTemplateCacheState cacheStateOfTemplateWithId(const std::string& templateId) const;
    /// See NVMTemplatesHandler::cacheTemplateWithId. Refusals run inside the call.
    void cacheTemplateWithId(const std::string& templateId, Completion completion) const;
    /// Null when it is not stored.
    std::shared_ptr<NVMEnvelopeTemplate> cachedTemplateWithId(const std::string& templateId,
                                                              bool includePdfs) const;
    std::vector<std::shared_ptr<NVMEnvelopeTemplate>> cachedTemplates() const;
    std::vector<std::string> cachedTemplateIds() const;
    std::size_t cachedTemplateCount() const;
    Failure removeCachedTemplateWithId(const std::string& templateId) const;
    Failure removeCachedTemplates() const;

    /// Whether a downloaded template may be cached; `error` (may be null) is the first rule that it breaks.
    bool canCacheEnvelopeTemplate(const NVESEnvelopeTemplate& envelopeTemplate, Failure* error) const;

    /// A new envelope for offline signing from a stored template with the host's defaults applied; see
    /// offlineEnvelopeFromTemplate.
    Result<std::shared_ptr<NVMEnvelopeDefinition>>
    createOfflineEnvelope(const std::string& templateId, const NVMEnvelopeDefaults& envelopeDefaults) const;

  private:
    std::weak_ptr<NVMTemplatesManagerDelegate> delegate_; ///< set before use; not synchronised
};

} // namespace norvane
