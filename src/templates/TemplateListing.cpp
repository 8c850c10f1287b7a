#include <norvane/api/NVESAccounts.h>
#include <norvane/api/NVESTemplates.h>
#include <norvane/api/NVMApi.h>
#include <norvane/model/NVMEnvelopeTemplateDefinition.h>
#include <norvane/platform/TextCompare.h>
#include <norvane/sdk/Errors.h>
#include <norvane/sdk/SessionState.h>
#include <norvane/templates/NVMTemplatesManager.h>

namespace norvane {
namespace {

constexpr int kMaximumPages = 1000; ///< of one listing, whatever the service says is left

/// Fetches the pages of a listing one after another.
class TemplateListing : public std::enable_shared_from_this<TemplateListing> {
  public:
    TemplateListing(NVESTemplatesApi_ListTemplatesOptions options, NVMTemplatesManager::Predicate predicate,
                    NVMTemplatesManager::ListCompletion completion)
        : options_(std::move(options))
        , predicate_(std::move(predicate))
        , completion_(std::move(completion)) {}

    void fetchPage() {
        NVMApi::getTemplatesWithOptions(
            options_, [self = shared_from_this()](const std::shared_ptr<NVESEnvelopeTemplateResults>& page,
                                                  const std::optional<NVMError>& error) {
                if (error || !page) {
                    self->completion_(std::nullopt, error.value_or(NVM_errorInvalidInput()));
                } else {
                    self->add(*page);
                }
            });
    }

  private:
    void add(const NVESEnvelopeTemplateResults& page) {
        std::size_t count = 0;
        if (page.envelopeTemplates) {
            count = page.envelopeTemplates->size();
            for (const auto& wire : *page.envelopeTemplates) {
                auto found = std::make_shared<NVMEnvelopeTemplateDefinition>(*wire);
                if (!predicate_ || predicate_(*found)) found_.push_back(std::move(found));
            }
        }
        fetched_ += static_cast<std::int64_t>(count);
        const bool isComplete = fetched_ >= Value(page.totalSetSize).integerValue();
        if (count == 0 || isComplete || ++pages_ == kMaximumPages) {
            completion_(std::move(found_), std::nullopt);
            return;
        }
        options_.startPosition = std::to_string(fetched_);
        fetchPage();
    }

    NVESTemplatesApi_ListTemplatesOptions options_;
    const NVMTemplatesManager::Predicate predicate_;
    const NVMTemplatesManager::ListCompletion completion_;
    NVMTemplatesManager::TemplateList found_; ///< of the thread on which answers arrive
    std::int64_t fetched_ = 0;
    int pages_ = 0;
};

void list(NVESTemplatesApi_ListTemplatesOptions options, NVMTemplatesManager::Predicate predicate,
          NVMTemplatesManager::ListCompletion completion) {
    if (!completion) return;
    if (!NVM_isSetupAndLoginSuccessful()) {
        completion(std::nullopt, NVM_errorSetupIncomplete());
        return;
    }
    std::make_shared<TemplateListing>(std::move(options), std::move(predicate), std::move(completion))
        ->fetchPage();
}

/// Whether the name meets a search; the service is asked too, but may search more than names.
bool matches(const std::optional<std::string>& name, const std::string& text, NVMSearchOptions options) {
    if (!name) return false;
    switch (options) {
    case NVMSearchOptions::WholeName:
        return *name == text;
    case NVMSearchOptions::CaseSensitive:
        return name->find(text) != std::string::npos;
    case NVMSearchOptions::CaseInsensitive:
        break;
    }
    return foldedContains(*name, text);
}

} // namespace

void NVMTemplatesManager::listTemplatesWithCompletion(ListCompletion completion) const {
    list({}, {}, std::move(completion));
}

void NVMTemplatesManager::listTemplatesWithSearchPredicate(Predicate predicate,
                                                           ListCompletion completion) const {
    list({}, std::move(predicate), std::move(completion));
}

void NVMTemplatesManager::listTemplatesWithFolderId(const std::string& folderId,
                                                    ListCompletion completion) const {
    NVESTemplatesApi_ListTemplatesOptions options;
    options.folderIds = folderId;
    list(
        std::move(options),
        [folderId](const NVMEnvelopeTemplateDefinition& found) { return found.folderId == folderId; },
        std::move(completion));
}

void NVMTemplatesManager::listTemplatesWithTemplateName(const std::string& templateName,
                                                        NVMSearchOptions searchOptions,
                                                        ListCompletion completion) const {
    NVESTemplatesApi_ListTemplatesOptions options;
    options.searchText = templateName;
    list(
        std::move(options),
        [templateName, searchOptions](const NVMEnvelopeTemplateDefinition& found) {
            return matches(found.name, templateName, searchOptions);
        },
        std::move(completion));
}

void NVMTemplatesManager::listTemplateFoldersWithCompletion(FolderCompletion completion) const {
    if (!completion) return;
    if (!NVM_isSetupAndLoginSuccessful()) {
        completion(std::nullopt, NVM_errorSetupIncomplete());
        return;
    }
    NVESFoldersApi_ListOptions options;
    options.template_ = "only";
    NVMApi::getFoldersWithOptions(
        options, [completion = std::move(completion)](const std::shared_ptr<NVESFoldersResponse>& answer,
                                                      const std::optional<NVMError>& error) {
            if (error || !answer) {
                completion(std::nullopt, error.value_or(NVM_errorInvalidInput()));
            } else {
                completion(answer->folders.value_or(FolderList{}), std::nullopt);
            }
        });
}

} // namespace norvane
