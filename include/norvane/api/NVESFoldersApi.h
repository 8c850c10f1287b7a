#pragma once

#include <norvane/api/NVESOptions.h>
#include <norvane/api/NVESServiceApi.h>

namespace norvane {

struct NVESFoldersResponse;

/// Folders of envelopes and templates.
class NVESFoldersApi : public NVESServiceApi {
  public:
    explicit NVESFoldersApi(std::shared_ptr<NVESApiClient> apiClient = nullptr)
        : NVESServiceApi(std::move(apiClient)) {}

    std::uint64_t listWithCompletionBlock(const Text& accountId, const NVESFoldersApi_ListOptions& options,
                                          NVESRecordCompletion<NVESFoldersResponse> completionHandler) const;
};

} // namespace norvane
