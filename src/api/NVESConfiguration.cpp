#include <norvane/api/NVESApiClient.h>
#include <norvane/api/NVESConfiguration.h>
#include <norvane/api/NVESLogger.h>
#include <norvane/platform/Base64.h>

namespace norvane {

NVESConfiguration::NVESConfiguration()
    : host(*Url::parse("https://api.norvane.example/restapi")) {}

NVESConfiguration& NVESConfiguration::sharedConfig() {
    // Never destroyed: a client in it must not outlive the platform that ends with the process.
    static NVESConfiguration& shared = *new NVESConfiguration;
    return shared;
}

std::string NVESConfiguration::getApiKeyWithPrefix(std::string_view identifier) const {
    const auto key = apiKey.find(identifier);
    if (key == apiKey.end()) return {};
    const auto prefix = apiKeyPrefix.find(identifier);
    return prefix == apiKeyPrefix.end() ? key->second : prefix->second + " " + key->second;
}

std::string NVESConfiguration::getBasicAuthToken() const {
    return "Basic " + encodeBase64(username + ":" + password);
}

bool NVESConfiguration::debug() const { return NVESLogger::sharedLogger().isEnabled(); }

void NVESConfiguration::setDebug(bool debug) { NVESLogger::sharedLogger().setEnabled(debug); }

std::optional<std::filesystem::path> NVESConfiguration::loggingFile() const {
    const std::lock_guard lock(mutex_);
    return loggingFile_;
}

void NVESConfiguration::setLoggingFile(std::optional<std::filesystem::path> file) {
    NVESLogger::sharedLogger().setLoggingFile(file);
    const std::lock_guard lock(mutex_);
    loggingFile_ = std::move(file);
}

std::shared_ptr<NVESApiClient> NVESConfiguration::apiClient() {
    const std::lock_guard lock(mutex_);
    if (!apiClient_) apiClient_ = NVESApiClient::withBaseURL(host);
    return apiClient_;
}

void NVESConfiguration::setApiClient(std::shared_ptr<NVESApiClient> client) {
    const std::lock_guard lock(mutex_);
    apiClient_.swap(client);
}

} // namespace norvane
