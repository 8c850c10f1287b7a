#include "src/platform/http/RequestRules.h"

#include "src/platform/AsciiText.h"
#include "src/platform/http/TransportErrors.h"

#include <algorithm>

namespace norvane {
namespace {

NVMError refused(const HttpRequest& request, std::string why) {
    return transportError(TransportError::Refused, std::move(why), evidence(request.url));
}

/// A user name or password in an address would end up wherever addresses are written down.
bool namesUser(const Url& url) {
    const std::string& text = url.absoluteString();
    const auto begin = text.find("://") + 3;
    return text.substr(begin, text.find_first_of("/?#", begin) - begin).find('@') != std::string::npos;
}

bool framesMessage(std::string_view name) {
    return asciiEqualsIgnoringCase(name, "Content-Length") ||
           asciiEqualsIgnoringCase(name, "Transfer-Encoding") || asciiEqualsIgnoringCase(name, "Expect");
}

} // namespace

bool isHttpToken(std::string_view text) {
    constexpr std::string_view marks = "!#$%&'*+-.^_`|~";
    return !text.empty() && std::all_of(text.begin(), text.end(), [&](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
               marks.find(c) != std::string_view::npos;
    });
}

Failure refusal(const HttpRequest& request) {
    const std::string scheme = request.url.scheme();
    if (scheme != "https" && !(scheme == "http" && request.url.isLoopback()))
        return refused(request, "The server's address must begin with https.");
    if (namesUser(request.url))
        return refused(request, "The server's address must not hold a user name or password.");
    if (!isHttpToken(request.method)) return refused(request, "The request's method is not a word of HTTP.");
    for (const auto& [name, value] : request.headers) {
        if (!isHttpToken(name)) return refused(request, "A request header's name is not allowed.");
        if (std::any_of(value.begin(), value.end(), isAsciiControl))
            return refused(request, "The request header " + name + " holds control characters.");
        if (framesMessage(name))
            return refused(request, "The request header " + name + " is set by the session alone.");
    }
    return std::nullopt;
}

} // namespace norvane
