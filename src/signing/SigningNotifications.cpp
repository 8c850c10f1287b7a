#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/model/NVMRecipient.h>
#include <norvane/platform/Platform.h>
#include <norvane/signing/SigningNotifications.h>

namespace norvane {

namespace {

void post(std::string_view name, Dictionary userInfo, const Value& object = {}) {
    Platform::current().notifications->post({std::string(name), object, std::move(userInfo)});
}

Dictionary signingEnd(const std::optional<std::string>& envelopeId,
                      const std::optional<std::string>& templateId, NVMSigningMode mode) {
    Dictionary userInfo = userInfoWithEnvelopeId(envelopeId, templateId, std::nullopt);
    userInfo["signingMode"] = nvm_stringWithSigningMode(mode);
    return userInfo;
}

} // namespace

Dictionary userInfoWithEnvelopeId(const std::optional<std::string>& envelopeId,
                                  const std::optional<std::string>& templateId,
                                  const std::optional<NVMError>& error) {
    Dictionary userInfo;
    if (envelopeId) userInfo["envelopeId"] = *envelopeId;
    if (templateId) userInfo["templateId"] = *templateId;
    if (error) userInfo["error"] = Value::object(std::make_shared<const NVMError>(*error));
    return userInfo;
}

Dictionary nvm_userInfoWithRecipient(const std::shared_ptr<NVMRecipient>& recipient,
                                     const std::shared_ptr<NVMEnvelopeDefinition>& envelope) {
    return {{"recipient", Value::object(recipient)}, {"envelopeDefinition", Value::object(envelope)}};
}

Dictionary nvm_userInfoWithRecipients(const std::vector<std::shared_ptr<NVMRecipient>>& recipients,
                                      const std::shared_ptr<NVMEnvelopeDefinition>& envelope) {
    Array list;
    for (const auto& recipient : recipients)
        list.push_back(Value::object(recipient));
    return {{"recipients", std::move(list)}, {"envelopeDefinition", Value::object(envelope)}};
}

void nvm_notifySigningComplete(const std::optional<std::string>& envelopeId,
                               const std::optional<std::string>& templateId, NVMSigningMode mode,
                               const Value& screen) {
    post(NVMSigningCompletedNotification, signingEnd(envelopeId, templateId, mode), screen);
}

void nvm_notifySigningCancelled(const std::optional<std::string>& envelopeId,
                                const std::optional<std::string>& templateId, NVMSigningMode mode,
                                const Value& screen) {
    post(NVMSigningCancelledNotification, signingEnd(envelopeId, templateId, mode), screen);
}

void nvm_notifyOfflineEnvelopeSigningError(const NVMError& error,
                                           const std::optional<std::string>& envelopeId,
                                           const std::optional<std::string>& templateId,
                                           const std::optional<std::string>& additionalDetail) {
    Dictionary userInfo = userInfoWithEnvelopeId(envelopeId, templateId, error);
    if (additionalDetail) userInfo["additionalDetails"] = *additionalDetail;
    post(NVMOfflineEnvelopeSigningErrorNotification, std::move(userInfo));
}

void nvm_notifyFoundReadonlyAndRequiredTabsWithInvalidDefaults(const NVMError& error,
                                                               const std::optional<std::string>& envelopeId,
                                                               const std::optional<std::string>& templateId) {
    post(NVMFoundReadonlyAndRequiredTabsWithInvalidDefaultsNotification,
         userInfoWithEnvelopeId(envelopeId, templateId, error));
}

void nvm_notifySelectRecipientWillShowSigningWithUserInfo(const Dictionary& userInfo) {
    post(NVMEnvelopeSelectRecipientToBeginOfflineSigningNotification, userInfo);
}

void nvm_notifyEnvelopeRecipientWillBeginOfflineSigningWithUserInfo(const Dictionary& userInfo) {
    post(NVMEnvelopeRecipientWillBeginOfflineSigningNotification, userInfo);
}

void nvm_notifyEnvelopeRecipientDidEndOfflineSigningWithUserInfo(const Dictionary& userInfo) {
    post(NVMEnvelopeRecipientDidEndOfflineSigningNotification, userInfo);
}

} // namespace norvane
