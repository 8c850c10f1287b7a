#pragma once

#include <norvane/platform/NVMError.h>

#include <optional>
#include <string>
#include <utility>

namespace norvane {

/// What became of caching a template.
struct NVMCacheNotification {
    std::optional<std::string> templateId;
    std::optional<NVMError> error;

    NVMCacheNotification(std::optional<std::string> cachedTemplateId, std::optional<NVMError> cachingError)
        : templateId(std::move(cachedTemplateId))
        , error(std::move(cachingError)) {}
};

} // namespace norvane
