#include <norvane/api/NVESIdentity.h>
#include <norvane/sdk/NVMManager.h>
#include <norvane/sdk/SessionState.h>

namespace norvane {

std::string NVMManager::name() { return std::string(kKitName); }

std::string NVMManager::buildVersion() { return std::string(kKitBuildVersion); }

bool NVMManager::configuredValueForSetupKey(std::string_view key) {
    return norvane::configuredValueForSetupKey(key);
}

std::uint64_t NVMManager::configuredValueForSetupKeyTabDefaultsComparison() {
    return norvane::configuredValueForSetupKeyTabDefaultsComparison();
}

const Dictionary& NVMManager::defaultConfigurations() { return norvane::defaultConfigurations(); }

std::vector<std::string> NVMManager::setupConfigurationKeys() { return norvane::setupConfigurationKeys(); }

void NVMManager::NVM_setupSuccessful(bool successful) { norvane::NVM_setupSuccessful(successful); }

void NVMManager::NVM_loginSuccessful(bool successful) { norvane::NVM_loginSuccessful(successful); }

void NVMManager::NVM_clearCredentialsAndCachedTemplatesSuccessful(bool successful) {
    norvane::NVM_clearCredentialsAndCachedTemplatesSuccessful(successful);
}

bool NVMManager::NVM_isSetupAndLoginSuccessful() { return norvane::NVM_isSetupAndLoginSuccessful(); }

} // namespace norvane
