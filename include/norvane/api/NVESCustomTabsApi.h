#pragma once

#include <norvane/api/NVESServiceApi.h>

namespace norvane {

/// The account's custom tab definitions; see the operations of this service.
class NVESCustomTabsApi : public NVESServiceApi {
  public:
    explicit NVESCustomTabsApi(std::shared_ptr<NVESApiClient> apiClient = nullptr)
        : NVESServiceApi(std::move(apiClient)) {}
};

} // namespace norvane
