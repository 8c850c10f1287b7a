#pragma once

#include <norvane/api/NVESServiceApi.h>

namespace norvane {

struct NVESConsumerDisclosure;

/// The consent text that signers accept.
class NVESConsumerDisclosureApi : public NVESServiceApi {
  public:
    explicit NVESConsumerDisclosureApi(std::shared_ptr<NVESApiClient> apiClient = nullptr)
        : NVESServiceApi(std::move(apiClient)) {}

    std::uint64_t getConsumerDisclosureWithCompletionBlock(
        const Text& accountId, NVESRecordCompletion<NVESConsumerDisclosure> completionHandler) const;
};

} // namespace norvane
