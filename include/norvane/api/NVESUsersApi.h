#pragma once

#include <norvane/api/NVESServiceApi.h>

namespace norvane {

struct NVESUserSettingsInformation;

/// A user of an account.
class NVESUsersApi : public NVESServiceApi {
  public:
    explicit NVESUsersApi(std::shared_ptr<NVESApiClient> apiClient = nullptr)
        : NVESServiceApi(std::move(apiClient)) {}

    std::uint64_t
    getSettingsWithCompletionBlock(const Text& accountId, const Text& userId,
                                   NVESRecordCompletion<NVESUserSettingsInformation> completionHandler) const;
};

} // namespace norvane
