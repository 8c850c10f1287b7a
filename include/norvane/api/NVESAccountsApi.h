#pragma once

#include <norvane/api/NVESOptions.h>
#include <norvane/api/NVESServiceApi.h>

namespace norvane {

struct NVESAccountInformation;
struct NVESAccountSettingsInformation;

/// An account and its settings.
class NVESAccountsApi : public NVESServiceApi {
  public:
    explicit NVESAccountsApi(std::shared_ptr<NVESApiClient> apiClient = nullptr)
        : NVESServiceApi(std::move(apiClient)) {}

    std::uint64_t getAccountInformationWithCompletionBlock(
        const Text& accountId, const NVESAccountsApi_GetAccountInformationOptions& options,
        NVESRecordCompletion<NVESAccountInformation> completionHandler) const;
    std::uint64_t listSettingsWithCompletionBlock(
        const Text& accountId, NVESRecordCompletion<NVESAccountSettingsInformation> completionHandler) const;
};

} // namespace norvane
