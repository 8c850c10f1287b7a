#include "src/platform/AsciiText.h"

#include <norvane/api/NVESLogger.h>
#include <norvane/platform/Json.h>
#include <norvane/platform/Platform.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <mutex>

namespace norvane {
namespace {

/// Whoever knows the value of a member named like this can act for the user or open a signing page.
constexpr std::array<std::string_view, 8> kSecretNames = {
    "password", "token", "secret", "accesscode", "integratorkey", "authorization", "x-norvane-authentication",
    "assertion"};

bool holdsSecretName(std::string_view lowered) {
    return std::any_of(kSecretNames.begin(), kSecretNames.end(),
                       [&](std::string_view name) { return lowered.find(name) != std::string_view::npos; });
}

bool isContent(std::string_view key) { return asciiLowercased(key).find("base64") != std::string::npos; }

constexpr std::string_view kLengthEnd = " bytes-";

/// A body may have been redacted before.
bool isLength(std::string_view text) { return text.starts_with('-') && text.ends_with(kLengthEnd); }

std::string length(std::size_t bytes) { return "-" + std::to_string(bytes) + std::string(kLengthEnd); }

Value redacted(const Value& value) {
    if (const Array* array = value.asArray()) {
        Array result;
        for (const Value& element : *array)
            result.push_back(redacted(element));
        return result;
    }
    const Dictionary* dictionary = value.asDictionary();
    if (!dictionary) return value;
    Dictionary result;
    for (const auto& [key, member] : *dictionary) {
        const std::string* text = member.asString();
        if (NVESLogger::isSecret(key))
            result.emplace(key, "-redacted-");
        else if (text && isContent(key) && !isLength(*text))
            result.emplace(key, length(text->size()));
        else
            result.emplace(key, redacted(member));
    }
    return result;
}

} // namespace

struct NVESLogger::State {
    std::atomic<bool> enabled = false;
    std::mutex mutex; ///< guards the file
    int file = -1;

    void write(std::string line) {
        Platform::current().log->write(LogLevel::Debug, line);
        const std::lock_guard lock(mutex);
        line += '\n';
        // A trace that cannot be written must not disturb the request that it is about.
        if (file >= 0) [[maybe_unused]]
            const auto written = ::write(file, line.data(), line.size());
    }
};

NVESLogger::NVESLogger()
    : state_(std::make_unique<State>()) {}

NVESLogger::~NVESLogger() { setLoggingFile(std::nullopt); }

NVESLogger& NVESLogger::sharedLogger() {
    // Never destroyed: requests may end while the process does.
    static NVESLogger& shared = *new NVESLogger;
    return shared;
}

bool NVESLogger::isEnabled() const { return state_->enabled; }

void NVESLogger::setEnabled(bool enabled) { state_->enabled = enabled; }

void NVESLogger::debugLog(std::string_view method, std::string_view message) {
    if (isEnabled()) state_->write(std::string(method) + ": " + std::string(message));
}

void NVESLogger::logResponse(std::string_view method, std::string_view responseObject,
                             std::string_view request, const std::optional<NVMError>& error) {
    if (!isEnabled()) return;
    const std::string answer = error && responseObject.empty()
                                   ? error->domain + " " + std::to_string(error->code)
                                   : redactedBody(responseObject);
    debugLog(method, "\n[DEBUG] HTTP request body \n~BEGIN~\n " + redactedBody(request) +
                         "\n~END~\n[DEBUG] HTTP response body \n~BEGIN~\n " + answer + "\n~END~\n");
}

void NVESLogger::setLoggingFile(const std::optional<std::filesystem::path>& file) {
    const std::lock_guard lock(state_->mutex);
    if (state_->file >= 0) ::close(state_->file);
    state_->file = -1;
    if (file)
        state_->file = ::open(file->c_str(), O_WRONLY | O_CREAT | O_APPEND | O_NOFOLLOW | O_CLOEXEC, 0600);
}

bool NVESLogger::isSecret(std::string_view key) {
    const std::string name = asciiLowercased(key);
    return name == "url" || holdsSecretName(name);
}

bool NVESLogger::mayHoldSecret(std::string_view text) {
    const std::string lowered = asciiLowercased(text);
    return holdsSecretName(lowered) || lowered.find("\"url\"") != std::string::npos;
}

std::string NVESLogger::redactedBody(std::string_view body) {
    if (body.empty() || isLength(body)) return std::string(body);
    const auto json = parseJson(body);
    if (!json || !(json->isDictionary() || json->isArray())) return length(body.size());
    return writeJson(redacted(*json));
}

} // namespace norvane
