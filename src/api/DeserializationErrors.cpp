#include "src/api/DeserializationErrors.h"

#include <norvane/api/NVESLogger.h>
#include <norvane/platform/HttpSession.h>
#include <norvane/platform/Json.h>

#include <simdjson.h>

#include <algorithm>

namespace norvane {
namespace {

/// An answer may be large, and error texts end up in alerts and in the store.
constexpr std::size_t kQuotedBytes = 200;

/// Whether the path ("/loginAccounts/0/email") leads to or into a secret.
bool isSecretPath(std::string_view path) {
    for (std::size_t at = 0; at < path.size();) {
        const std::size_t end = std::min(path.find('/', at + 1), path.size());
        if (NVESLogger::isSecret(path.substr(at + 1, end - at - 1))) return true;
        at = end;
    }
    return false;
}

NVMError makeError(DeserializationError code, std::string description) {
    NVMError error = NVMError::make(std::string(kDeserializationErrorDomain), static_cast<std::int64_t>(code),
                                    std::move(description));
    // What answered may not have been the service; whether that acted is unknown.
    error.userInfo.emplace(kTransportRequestSentKey, true);
    return error;
}

} // namespace

std::string quotedAnswer(std::string_view received) {
    if (!simdjson::validate_utf8(received.data(), received.size()))
        return std::to_string(received.size()) + " bytes";
    std::string shown = NVESLogger::mayHoldSecret(received)
                            ? NVESLogger::redactedBody(received)
                            : std::string(received.substr(0, kQuotedBytes + 1));
    if (shown.size() <= kQuotedBytes) return shown;
    std::size_t end = kQuotedBytes;
    while (end > 0 && (static_cast<unsigned char>(shown[end]) & 0xC0) == 0x80)
        --end;
    return shown.substr(0, end) + "...";
}

NVMError typeMismatch(std::string_view received, std::string_view type, std::string path) {
    NVMError error =
        makeError(DeserializationError::TypeMismatch,
                  "Received response [" + (isSecretPath(path) ? "-redacted-" : quotedAnswer(received)) +
                      "] is not an object of type " + std::string(type));
    if (!path.empty()) error.userInfo.emplace(kJsonPathKey, std::move(path));
    return error;
}

NVMError nullInResponse() {
    return makeError(DeserializationError::NullValue,
                     "Received response contains null value in dictionary or array response");
}

NVMError unknownType(std::string_view type, std::string_view received) {
    return makeError(DeserializationError::UnknownType, "Unknown response expected type " +
                                                            std::string(type) +
                                                            " [response: " + quotedAnswer(received) + "]");
}

} // namespace norvane
