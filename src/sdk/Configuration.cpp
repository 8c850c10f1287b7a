#include <norvane/platform/Platform.h>
#include <norvane/sdk/Configuration.h>

namespace norvane {

bool configuredValueForSetupKey(std::string_view key) {
    const Value stored = nvm_getDefaultsStringForKey(key);
    if (!stored.isNull()) return stored.boolValue();
    const auto found = defaultConfigurations().find(key);
    return found != defaultConfigurations().end() && found->second.boolValue();
}

std::uint64_t configuredValueForSetupKeyTabDefaultsComparison() {
    return static_cast<std::uint64_t>(
        nvm_getDefaultsStringForKey(NVM_SETUP_TAB_DEFAULTS_COMPARISION).integerValue());
}

const Dictionary& defaultConfigurations() {
    static const Dictionary defaults = [] {
        constexpr std::string_view on = NVM_SETUP_TRUE_VALUE;
        constexpr std::string_view off = NVM_SETUP_FALSE_VALUE;
        return Dictionary{
            {std::string(NVM_SETUP_OFFLINE_SIGNING_HIDE_ALERTS_KEY), off},
            {std::string(NVM_SETUP_DISABLE_CONTACTS_USAGE_KEY), off},
            {std::string(NVM_SETUP_OFFLINE_SIGNING_HIDE_SWITCH_RECIPIENT_UI_KEY), on},
            {std::string(NVM_SETUP_ICLOUD_DOCUMENT_ENABLED), off},
            {std::string(NVM_SETUP_OFFLINE_SIGNING_SET_MERGEFIELD_AS_NIL_FOR_TABS_CONVERSION), off},
            {std::string(NVM_SETUP_OFFLINE_SIGNING_CONVERT_ZIPTABS_TO_TEXTTABS), off},
            {std::string(NVM_SETUP_OFFLINE_SIGNING_CONVERT_NUMBERTABS_TO_TEXTTABS), off},
            {std::string(NVM_SETUP_OFFLINE_SIGNING_CONVERT_EMAILTABS_TO_TEXTTABS), off},
            {std::string(NVM_SETUP_OFFLINE_SIGNING_CONVERT_DATETABS_TO_TEXTTABS), off},
            {std::string(NVM_SETUP_OFFLINE_SIGNING_CONVERT_INVALID_READONLY_REQUIRED_TEXTTABS_TO_EDITABLE),
             on},
            {std::string(NVM_SETUP_POWERED_BY_NORVANE_ENABLED), on},
            {std::string(NVM_SETUP_OFFLINE_SIGNING_USE_PLACEHOLDER_TAB_VALUE), on},
            {std::string(NVM_SETUP_OFFLINE_SIGNING_NAVIGATE_BLANK_REQUIRED_FIELDS), off},
            {std::string(NVM_SETUP_RECIPIENT_DEFAULTS_CASE_INSENSITIVELY_MATCH_ROLE_NAME), off},
            {std::string(NVM_SETUP_TAB_DEFAULTS_COMPARISION), 0},
        };
    }();
    return defaults;
}

std::vector<std::string> setupConfigurationKeys() {
    std::vector<std::string> keys;
    for (const auto& [key, value] : defaultConfigurations())
        keys.push_back(key);
    return keys;
}

Failure nvm_setDefaults(const Value& value, std::string_view key) {
    return nvm_setDefault(value, key, *Platform::current().userDefaults);
}

Failure nvm_setDefault(const Value& value, std::string_view key, UserDefaults& inDefaults) {
    return inDefaults.setValue(kAccountDefaultsSuite, key, value);
}

Value nvm_getDefaultsStringForKey(std::string_view key) {
    return Platform::current().userDefaults->value(kAccountDefaultsSuite, key);
}

} // namespace norvane
