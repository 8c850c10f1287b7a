#pragma once

#include <norvane/api/NVESOptions.h>
#include <norvane/api/NVESServiceApi.h>

namespace norvane {

struct NVESEnvelopeTemplate;
struct NVESEnvelopeTemplateResults;

/// Templates and their documents.
class NVESTemplatesApi : public NVESServiceApi {
  public:
    explicit NVESTemplatesApi(std::shared_ptr<NVESApiClient> apiClient = nullptr)
        : NVESServiceApi(std::move(apiClient)) {}

    std::uint64_t listTemplatesWithCompletionBlock(
        const Text& accountId, const NVESTemplatesApi_ListTemplatesOptions& options,
        NVESRecordCompletion<NVESEnvelopeTemplateResults> completionHandler) const;
    std::uint64_t getWithCompletionBlock(const Text& accountId, const Text& templateId,
                                         NVESRecordCompletion<NVESEnvelopeTemplate> completionHandler) const;
    /// Downloads a document's PDF; the id "combined" stands for all of them in one.
    std::uint64_t getDocumentWithCompletionBlock(const Text& accountId, const Text& templateId,
                                                 const Text& documentId,
                                                 NVESFileCompletion completionHandler) const;
};

} // namespace norvane
