#pragma once

#include <norvane/platform/Result.h>
#include <norvane/platform/Value.h>

#include <optional>
#include <string>
#include <string_view>

namespace norvane {

void postNotification(std::string_view name, Dictionary userInfo = {});

/// "envelopeId", "templateId" and "error", as far as they are present.
Dictionary cacheUserInfo(const std::optional<std::string>& envelopeId,
                         const std::optional<std::string>& templateId, const Failure& error = std::nullopt);

} // namespace norvane
