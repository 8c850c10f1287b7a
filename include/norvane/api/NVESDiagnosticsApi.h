#pragma once

#include <norvane/api/NVESServiceApi.h>

namespace norvane {

/// The service itself: its versions and its request logs; see the operations of this service.
class NVESDiagnosticsApi : public NVESServiceApi {
  public:
    explicit NVESDiagnosticsApi(std::shared_ptr<NVESApiClient> apiClient = nullptr)
        : NVESServiceApi(std::move(apiClient)) {}
};

} // namespace norvane
