#include "sandbox/Fault.h"

#include "sandbox/Json.h"
#include "sandbox/Text.h"

#include <array>
#include <limits>
#include <utility>

namespace norvane::sandbox {

namespace {

using Kind = Fault::Kind;

constexpr std::array<std::pair<Kind, std::string_view>, 8> kKindNames{{
    {Kind::None, "delay"},
    {Kind::Status, "status"},
    {Kind::Portal, "portal"},
    {Kind::Hang, "hang"},
    {Kind::CutRequest, "cut-request"},
    {Kind::CutAnswer, "cut-answer"},
    {Kind::ApplyThenClose, "apply-close"},
    {Kind::ApplyThenHang, "apply-hang"},
}};

constexpr unsigned long long kLongestDelay = 3'600'000;

std::optional<Kind> kindNamed(std::string_view name) {
    for (const auto& [kind, known] : kKindNames)
        if (known == name) return kind;
    return std::nullopt;
}

/// Puts one number into the fault; answers what is wrong with it, or nothing.
std::string setNumber(Fault& fault, std::string_view key, unsigned long long value) {
    if (value > std::numeric_limits<unsigned>::max()) return std::string(key) + " is too large";
    const auto number = static_cast<unsigned>(value);
    if (key == "status") {
        if (value < 200 || value > 599) return "status is not between 200 and 599";
        fault.status = static_cast<int>(value);
    } else if (key == "delay" || key == "delayMs") {
        if (value > kLongestDelay) return "delay is longer than an hour";
        fault.delay = std::chrono::milliseconds(value);
    } else if (key == "skip") {
        fault.skip = number;
    } else if (key == "times") {
        fault.times = number;
    } else if (key == "nth") {
        if (number == 0) return "nth counts from 1";
        fault.skip = number - 1;
        fault.times = 1;
    } else if (key == "cut-request" || key == "cut-answer" || key == "bytes") {
        fault.bytes = value;
    } else {
        return "unknown: " + std::string(key);
    }
    return {};
}

std::string readWord(Fault& fault, std::optional<Kind>& kind, std::string_view word) {
    const auto equals = word.find('=');
    const std::string_view key = word.substr(0, equals);
    if (const auto named = kindNamed(key); named && *named != Kind::None) {
        if (kind) return "more than one kind";
        kind = named;
    }
    if (equals != std::string_view::npos) {
        const auto value = wholeNumber(word.substr(equals + 1));
        return value ? setNumber(fault, key, *value) : std::string(key) + " is not a number";
    }
    const bool needsNumber = kind == Kind::Status || kind == Kind::CutRequest || kind == Kind::CutAnswer;
    if (!kindNamed(key) || key == "delay") return "unknown: " + std::string(word);
    return needsNumber ? std::string(key) + " needs a number" : std::string();
}

std::string checked(const Fault& fault) {
    if (fault.path.empty() || fault.path.front() != '/') return "the path does not begin with /";
    return fault.method.empty() ? "the method is missing" : "";
}

} // namespace

std::string_view nameOf(Fault::Kind kind) {
    for (const auto& [known, name] : kKindNames)
        if (known == kind) return name;
    return {};
}

bool Fault::matches(std::string_view requestMethod, std::string_view requestPath) const {
    if (method != "*" && method != requestMethod) return false;
    const auto pattern = split(path, '/');
    const auto segments = split(requestPath, '/');
    for (std::size_t index = 0; index < pattern.size(); ++index) {
        if (pattern[index] == "**") return true;
        if (index >= segments.size()) return false;
        if (pattern[index] != "*" && pattern[index] != segments[index]) return false;
    }
    return pattern.size() == segments.size();
}

FaultResult parseFault(std::string_view text) {
    FaultResult result;
    std::optional<Kind> kind;
    std::size_t words = 0;
    for (auto rest = trimmed(text); !rest.empty(); rest = trimmed(rest)) {
        if (words >= 2 && rest.starts_with("body=")) {
            result.fault.body = std::string(rest.substr(5));
            break;
        }
        const auto word = rest.substr(0, rest.find_first_of(" \t"));
        rest.remove_prefix(word.size());
        if (++words == 1) {
            result.fault.method = std::string(word);
        } else if (words == 2) {
            result.fault.path = std::string(word);
        } else if (result.error = readWord(result.fault, kind, word); !result.ok()) {
            return result;
        }
    }
    result.error = words < 2 ? "a method and a path are needed" : checked(result.fault);
    if (result.ok() && !kind && result.fault.delay.count() == 0)
        result.error = "the kind of fault is missing";
    result.fault.kind = kind.value_or(Kind::None);
    return result;
}

FaultResult faultFromJson(const Json& json) {
    FaultResult result;
    if (!json.isObject()) return {{}, "a fault is an object"};
    for (const auto& [key, value] : json.members()) {
        if (key == "method" && value.isText()) {
            result.fault.method = value.asText();
        } else if (key == "path" && value.isText()) {
            result.fault.path = value.asText();
        } else if (key == "body" && (value.isText() || value.isObject())) {
            result.fault.body = value.isText() ? value.asText() : value.write();
        } else if (key == "kind") {
            const auto kind = kindNamed(value.asText());
            if (!kind) return {{}, "unknown kind"};
            result.fault.kind = *kind;
        } else if (const auto number = value.asInteger(-1); number >= 0) {
            result.error = setNumber(result.fault, key, static_cast<unsigned long long>(number));
            if (!result.ok()) return result;
        } else {
            return {{}, key + " is unknown or of the wrong kind"};
        }
    }
    result.error = checked(result.fault);
    return result;
}

Json faultJson(const Fault& fault) {
    Json json = Json::object({{"method", fault.method},
                              {"path", fault.path},
                              {"kind", nameOf(fault.kind)},
                              {"skip", std::int64_t{fault.skip}},
                              {"times", std::int64_t{fault.times}}});
    if (fault.kind == Kind::Status) json.set("status", fault.status);
    if (!fault.body.empty()) json.set("body", fault.body);
    if (fault.bytes > 0) json.set("bytes", static_cast<std::int64_t>(fault.bytes));
    if (fault.delay.count() > 0) json.set("delayMs", static_cast<std::int64_t>(fault.delay.count()));
    return json;
}

} // namespace norvane::sandbox
