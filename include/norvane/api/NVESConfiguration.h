#pragma once

#include <norvane/platform/Url.h>
#include <norvane/platform/Value.h>

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace norvane {

class NVESApiClient;

/// Settings of all REST clients. The plain members are set before the first client is made and not
/// synchronised.
class NVESConfiguration {
  public:
    static NVESConfiguration& sharedConfig(); ///< made once

    Url host; ///< base address for clients that are given none
    std::string username;
    std::string password;
    std::optional<std::filesystem::path> tempFolderPath;
    bool verifySSL = true;
    /// Certificate file to pin, PEM or DER. It must match whatever `verifySSL` says.
    std::optional<std::string> sslCaCert;
    /// Keys and their prefixes by identifier.
    std::map<std::string, std::string, std::less<>> apiKey;
    std::map<std::string, std::string, std::less<>> apiKeyPrefix;
    /// Named settings, each a dictionary of "in" ("header" or "query"), "key" and "value". Empty: the kit
    /// authenticates through headers of its own.
    Dictionary authSettings;

    /// "<prefix> <key>", the key alone without a prefix, the empty text without a key.
    std::string getApiKeyWithPrefix(std::string_view identifier) const;
    /// "Basic " and the base64 of "<username>:<password>".
    std::string getBasicAuthToken() const;

    bool debug() const; ///< whether the shared logger writes
    void setDebug(bool debug);
    std::optional<std::filesystem::path> loggingFile() const;
    void setLoggingFile(std::optional<std::filesystem::path> file); ///< handed to the shared logger

    /// The client of service objects that are given none; made over `host` at the first call.
    std::shared_ptr<NVESApiClient> apiClient();
    void setApiClient(std::shared_ptr<NVESApiClient> client);

  private:
    NVESConfiguration();
    mutable std::mutex mutex_; ///< guards the two below
    std::shared_ptr<NVESApiClient> apiClient_;
    std::optional<std::filesystem::path> loggingFile_;
};

} // namespace norvane
