#include "src/store/Notify.h"

#include <norvane/platform/Platform.h>
#include <norvane/store/CacheNotifications.h>

namespace norvane {

void postNotification(std::string_view name, Dictionary userInfo) {
    Platform::current().notifications->post({std::string(name), {}, std::move(userInfo)});
}

Dictionary cacheUserInfo(const std::optional<std::string>& envelopeId,
                         const std::optional<std::string>& templateId, const Failure& error) {
    Dictionary userInfo;
    if (envelopeId) userInfo.emplace(NVMEnvelopeIdKey, *envelopeId);
    if (templateId) userInfo.emplace(NVMTemplateIdKey, *templateId);
    if (error) userInfo.emplace(NVMErrorKey, Value::object(std::make_shared<const NVMError>(*error)));
    return userInfo;
}

} // namespace norvane
