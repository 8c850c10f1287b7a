#pragma once

#include "src/templates/WireView.h"

#include <norvane/platform/NVMError.h>

#include <optional>
#include <vector>

// The rules on one recipient. Each answers why the recipient breaks it, or nothing.
namespace norvane {

/// The recipient's "name", else its "signerName".
std::optional<std::string> nameOfRecipient(const WireRecipient& recipient);

std::optional<NVMError> anyInvalidOfflineAttributeForRecipient(const WireRecipient& recipient);
std::optional<NVMError> anyInvalidOnlineAttributeForRecipient(const WireRecipient& recipient);
/// Role name, and what else the recipient may or must say about who it is.
std::optional<NVMError> anyInvalidOfflineRoleSettingForRecipient(const WireRecipient& recipient);
/// Recipients of one role name must be alike.
std::optional<NVMError> anyInvalidOfflineRoleSettingForRecipient(const WireRecipient& recipient,
                                                                 const std::vector<WireRecipient>& others);
std::optional<NVMError> anyInvalidOfflineTabForRecipient(const WireRecipient& recipient);
std::optional<NVMError> anyInvalidOnlineTabForRecipient(const WireRecipient& recipient);
std::optional<NVMError> anyInvalidAttributeValueForTab(const WireView& tab,
                                                       const std::optional<std::string>& recipientName);

} // namespace norvane
