#include "sandbox/HttpMessage.h"

#include "sandbox/Json.h"
#include "sandbox/Text.h"

namespace norvane::sandbox {

const std::string* findHeader(const Headers& headers, std::string_view name) {
    for (const auto& [key, value] : headers)
        if (equalsIgnoringCase(key, name)) return &value;
    return nullptr;
}

std::string Request::queryValue(std::string_view name) const {
    for (const auto& [key, value] : query)
        if (key == name) return value;
    return {};
}

Answer errorAnswer(int status, std::string_view code, std::string_view message) {
    Answer answer;
    answer.status = status;
    answer.body = Json::object({{"errorCode", code}, {"message", message}}).write();
    return answer;
}

bool splitTarget(Request& request) {
    const std::string_view target = request.target;
    const auto mark = target.find('?');
    request.path = std::string(target.substr(0, mark));
    if (mark == std::string_view::npos) return true;
    for (const std::string& pair : split(target.substr(mark + 1), '&')) {
        if (pair.empty()) continue;
        const auto equals = pair.find('=');
        const auto name = percentDecoded(pair.substr(0, equals), true);
        const auto value = percentDecoded(equals == std::string::npos ? "" : pair.substr(equals + 1), true);
        if (!name || !value) return false;
        request.query.emplace_back(*name, *value);
    }
    return true;
}

} // namespace norvane::sandbox
