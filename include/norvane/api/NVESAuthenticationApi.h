#pragma once

#include <norvane/api/NVESOptions.h>
#include <norvane/api/NVESServiceApi.h>

namespace norvane {

struct NVESLoginInformation;

/// Signing in.
class NVESAuthenticationApi : public NVESServiceApi {
  public:
    explicit NVESAuthenticationApi(std::shared_ptr<NVESApiClient> apiClient = nullptr)
        : NVESServiceApi(std::move(apiClient)) {}

    /// The accounts of the user that the headers name.
    std::uint64_t
    loginWithCompletionBlock(const NVESAuthenticationApi_LoginOptions& options,
                             NVESRecordCompletion<NVESLoginInformation> completionHandler) const;
};

} // namespace norvane
