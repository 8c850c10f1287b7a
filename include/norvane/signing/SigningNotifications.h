#pragma once

#include <norvane/platform/NVMError.h>
#include <norvane/platform/Value.h>
#include <norvane/signing/NVMSigningMode.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace norvane {

struct NVMRecipient;
struct NVMEnvelopeDefinition;

inline constexpr std::string_view NVMEnvelopeSelectRecipientToBeginOfflineSigningNotification =
    "NVMEnvelopeSelectRecipientToBeginOfflineSigningNotification";
inline constexpr std::string_view NVMEnvelopeRecipientWillBeginOfflineSigningNotification =
    "NVMEnvelopeRecipientWillBeginOfflineSigningNotification";
inline constexpr std::string_view NVMEnvelopeRecipientDidEndOfflineSigningNotification =
    "NVMEnvelopeRecipientDidEndOfflineSigningNotification";
inline constexpr std::string_view NVMOfflineEnvelopeSigningErrorNotification =
    "NVMOfflineEnvelopeSigningErrorNotification";
inline constexpr std::string_view NVMFoundReadonlyAndRequiredTabsWithInvalidDefaultsNotification =
    "NVMFoundReadonlyAndRequiredTabsWithInvalidDefaultsNotification";
inline constexpr std::string_view NVMSigningCompletedNotification = "NVMSigningCompletedNotification";
inline constexpr std::string_view NVMSigningCancelledNotification = "NVMSigningCancelledNotification";

/// User information with those of "envelopeId", "templateId" and "error" that are present.
Dictionary userInfoWithEnvelopeId(const std::optional<std::string>& envelopeId,
                                  const std::optional<std::string>& templateId,
                                  const std::optional<NVMError>& error);
/// {"recipient", "envelopeDefinition"}: `Value::object`s of NVMRecipient and NVMEnvelopeDefinition.
Dictionary nvm_userInfoWithRecipient(const std::shared_ptr<NVMRecipient>& recipient,
                                     const std::shared_ptr<NVMEnvelopeDefinition>& envelope);
/// {"recipients": array, "envelopeDefinition"}.
Dictionary nvm_userInfoWithRecipients(const std::vector<std::shared_ptr<NVMRecipient>>& recipients,
                                      const std::shared_ptr<NVMEnvelopeDefinition>& envelope);

/// All of these post synchronously on the platform's notification centre, on the calling thread. `screen` is
/// the presenting screen, the notification's object; it may be null.
void nvm_notifySigningComplete(const std::optional<std::string>& envelopeId,
                               const std::optional<std::string>& templateId, NVMSigningMode mode,
                               const Value& screen);
void nvm_notifySigningCancelled(const std::optional<std::string>& envelopeId,
                                const std::optional<std::string>& templateId, NVMSigningMode mode,
                                const Value& screen);
/// `additionalDetail` stands under "additionalDetails" when given.
void nvm_notifyOfflineEnvelopeSigningError(const NVMError& error,
                                           const std::optional<std::string>& envelopeId,
                                           const std::optional<std::string>& templateId,
                                           const std::optional<std::string>& additionalDetail = std::nullopt);
void nvm_notifyFoundReadonlyAndRequiredTabsWithInvalidDefaults(const NVMError& error,
                                                               const std::optional<std::string>& envelopeId,
                                                               const std::optional<std::string>& templateId);
void nvm_notifySelectRecipientWillShowSigningWithUserInfo(const Dictionary& userInfo);
void nvm_notifyEnvelopeRecipientWillBeginOfflineSigningWithUserInfo(const Dictionary& userInfo);
void nvm_notifyEnvelopeRecipientDidEndOfflineSigningWithUserInfo(const Dictionary& userInfo);

} // namespace norvane
