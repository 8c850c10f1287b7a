#pragma once

#include <norvane/platform/Result.h>
#include <norvane/platform/UserDefaults.h>
#include <norvane/platform/Value.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace norvane {

/// The suite of the kit's own settings: configuration keys, and the id of the signed-in user.
inline constexpr std::string_view kAccountDefaultsSuite = "com.norvane.norvanesdk.accountdefaults";

// Configuration keys, each with what "true" switches on and its built-in default. Values are the texts "true"
// and "false" but for the last key's, an unsigned integer.
inline constexpr std::string_view NVM_SETUP_TRUE_VALUE = "true";
inline constexpr std::string_view NVM_SETUP_FALSE_VALUE = "false";
/// No alerts during offline signing and synchronisation. Default "false".
inline constexpr std::string_view NVM_SETUP_OFFLINE_SIGNING_HIDE_ALERTS_KEY =
    "nvm.setup.offline.signing.hide.alerts";
/// The device's address book is never touched. Default "false".
inline constexpr std::string_view NVM_SETUP_DISABLE_CONTACTS_USAGE_KEY = "nvm.setup.disable.contacts.usage";
/// Switching the recipient during offline signing is not allowed. Default "true". The constant says "hide",
/// its key does not: deliberate.
inline constexpr std::string_view NVM_SETUP_OFFLINE_SIGNING_HIDE_SWITCH_RECIPIENT_UI_KEY =
    "nvm.setup.offline.signing.switch.recipients.ui";
/// Documents may be picked from cloud storage. Default "false".
inline constexpr std::string_view NVM_SETUP_ICLOUD_DOCUMENT_ENABLED = "nvm.setup.icloud.document.enabled";
/// A tab converted to a text tab loses its merge field. Default "false".
inline constexpr std::string_view NVM_SETUP_OFFLINE_SIGNING_SET_MERGEFIELD_AS_NIL_FOR_TABS_CONVERSION =
    "nvm.setup.offline.signing.set.mergefields.as.nil.for.tab.conversion";
/// Zip, number, e-mail and date tabs become text tabs for offline signing. Each "false" by default.
inline constexpr std::string_view NVM_SETUP_OFFLINE_SIGNING_CONVERT_ZIPTABS_TO_TEXTTABS =
    "nvm.setup.offline.signing.convert.ziptabs.to.texttabs";
inline constexpr std::string_view NVM_SETUP_OFFLINE_SIGNING_CONVERT_NUMBERTABS_TO_TEXTTABS =
    "nvm.setup.offline.signing.convert.numbertabs.to.texttabs";
inline constexpr std::string_view NVM_SETUP_OFFLINE_SIGNING_CONVERT_EMAILTABS_TO_TEXTTABS =
    "nvm.setup.offline.signing.convert.emailtabs.to.texttabs";
inline constexpr std::string_view NVM_SETUP_OFFLINE_SIGNING_CONVERT_DATETABS_TO_TEXTTABS =
    "nvm.setup.offline.signing.convert.datetabs.to.texttabs";
/// Text tabs both read-only and required, without a value, become editable. Default "true".
inline constexpr std::string_view
    NVM_SETUP_OFFLINE_SIGNING_CONVERT_INVALID_READONLY_REQUIRED_TEXTTABS_TO_EDITABLE =
        "nvm.setup.offline.signing.convert.invalid.readonly.required.texttabs.to.editable";
/// Signing screens show the branding view. Default "true".
inline constexpr std::string_view NVM_SETUP_POWERED_BY_NORVANE_ENABLED =
    "nvm.setup.powered.by.norvane.enabled";
/// An empty tab shows placeholder content. Default "true".
inline constexpr std::string_view NVM_SETUP_OFFLINE_SIGNING_USE_PLACEHOLDER_TAB_VALUE =
    "nvm.setup.offline.signing.use.placeholder.tab.value";
/// Next-field navigation visits only required fields that are still blank. Default "false".
inline constexpr std::string_view NVM_SETUP_OFFLINE_SIGNING_NAVIGATE_BLANK_REQUIRED_FIELDS =
    "nvm.setup.offline.signing.navigate.blank.requiredfields";
/// Recipient defaults find their recipient by role name ignoring case. Default "false".
inline constexpr std::string_view NVM_SETUP_RECIPIENT_DEFAULTS_CASE_INSENSITIVELY_MATCH_ROLE_NAME =
    "nvm.setup.recipients.defaults.case.insensitively.match.role.name";
/// How tab value defaults match tab labels: 0 the label is a key exactly; 1 the label equals the key ignoring
/// case and diacritics; 2 the label contains the key; anything else: no tab defaults apply. Default 0. The
/// misspelling is the kit's own.
inline constexpr std::string_view NVM_SETUP_TAB_DEFAULTS_COMPARISION = "nvm.setup.tab.defaults.comparision";

/// The Boolean reading of the stored value, else of the built-in default, else false. Any thread.
bool configuredValueForSetupKey(std::string_view key);
/// The integer reading of what is stored under `NVM_SETUP_TAB_DEFAULTS_COMPARISION`, or 0. Any thread.
std::uint64_t configuredValueForSetupKeyTabDefaultsComparison();
/// The built-in defaults by key; made once.
const Dictionary& defaultConfigurations();
/// The keys that have a built-in default.
std::vector<std::string> setupConfigurationKeys();

/// Stores a value of the kit's suite, or removes the key when the value is null. Texts are stored as they
/// are.
Failure nvm_setDefaults(const Value& value, std::string_view key);
/// The same in the given defaults.
Failure nvm_setDefault(const Value& value, std::string_view key, UserDefaults& inDefaults);
/// The stored value of the kit's suite, whatever its type; null when there is none.
Value nvm_getDefaultsStringForKey(std::string_view key);

} // namespace norvane
