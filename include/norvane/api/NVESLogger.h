#pragma once

#include <norvane/platform/NVMError.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace norvane {

/// Debug traces of the REST client, to the platform's log and, when one is set, to a file. Off at start. Any
/// thread may call.
class NVESLogger {
  public:
    static NVESLogger& sharedLogger();
    ~NVESLogger();

    bool isEnabled() const;
    void setEnabled(bool enabled);
    /// When enabled, writes "<method>: <message>".
    void debugLog(std::string_view method, std::string_view message);
    /// When enabled, writes both bodies inside their frame. The bodies are shown redacted: see
    /// `redactedBody`.
    void logResponse(std::string_view method, std::string_view responseObject, std::string_view request,
                     const std::optional<NVMError>& error);
    /// Lines are appended to this file too (made 0600), until it is set to none.
    void setLoggingFile(const std::optional<std::filesystem::path>& file);

    /// A JSON body with each secret (passwords, keys, tokens, codes, signing addresses) as "-redacted-" and
    /// each base64 content as its length; any other body as its length ("-1024 bytes-").
    static std::string redactedBody(std::string_view body);
    /// Whether a member of that name is one of those secrets.
    static bool isSecret(std::string_view key);
    /// Whether a text, JSON or what was meant to be, names such a member anywhere.
    static bool mayHoldSecret(std::string_view text);

  private:
    NVESLogger();
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace norvane
