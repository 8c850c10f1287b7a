#include "src/platform/http/CacheRules.h"

#include "src/platform/AsciiText.h"

#include <norvane/platform/Files.h>

#include <curl/curl.h>

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>

namespace norvane {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using Directives = std::map<std::string, std::string>;

/// Longest lifetime and age that are told apart: the largest that RFC 9111 asks for.
constexpr std::int64_t kMaxSeconds = 2'147'483'648;

void addDirective(std::string_view text, Directives& directives) {
    const auto equals = std::min(text.find('='), text.size());
    std::string_view argument = asciiTrimmed(text.substr(std::min(equals + 1, text.size())));
    if (argument.size() >= 2 && argument.front() == '"' && argument.back() == '"')
        argument = argument.substr(1, argument.size() - 2);
    if (const auto name = asciiTrimmed(text.substr(0, equals)); !name.empty())
        directives.emplace(asciiLowercased(name), argument);
}

/// The directives of every Cache-Control header; commas inside quotes belong to an argument.
Directives cacheControl(const HttpResponse& response) {
    Directives directives;
    for (const auto& [name, value] : response.headers) {
        if (!asciiEqualsIgnoringCase(name, "Cache-Control")) continue;
        bool quoted = false;
        std::size_t begin = 0;
        for (std::size_t i = 0; i <= value.size(); ++i) {
            if (i < value.size() && value[i] == '"') quoted = !quoted;
            if (i < value.size() && (value[i] != ',' || quoted)) continue;
            addDirective(std::string_view(value).substr(begin, i - begin), directives);
            begin = i + 1;
        }
    }
    return directives;
}

/// A count of seconds; nothing when the text is none.
std::optional<seconds> secondsOf(std::string_view text) {
    std::int64_t count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    if (error == std::errc::result_out_of_range) return seconds(kMaxSeconds);
    if (error != std::errc() || end != text.data() + text.size() || count < 0) return std::nullopt;
    return seconds(std::min(count, kMaxSeconds));
}

std::optional<Date> dateHeader(const HttpResponse& response, std::string_view name) {
    const auto text = response.header(name);
    if (!text) return std::nullopt;
    const std::time_t time = curl_getdate(text->c_str(), nullptr);
    if (time < 0) return std::nullopt;
    return Date(seconds(time));
}

milliseconds lifetime(const CachedResponse& cached) {
    const Directives rules = cacheControl(cached.response);
    if (const auto maxAge = rules.find("max-age"); maxAge != rules.end())
        return secondsOf(maxAge->second).value_or(seconds(0));
    if (!cached.response.header("Expires")) return milliseconds(0);
    const auto expires = dateHeader(cached.response, "Expires"); // "0" and the like mean: at once
    return expires ? *expires - dateHeader(cached.response, "Date").value_or(cached.received)
                   : milliseconds(0);
}

milliseconds ageWhenReceived(const CachedResponse& cached) {
    const milliseconds apparent =
        cached.received - dateHeader(cached.response, "Date").value_or(cached.received);
    const milliseconds told = secondsOf(cached.response.header("Age").value_or("0")).value_or(seconds(0));
    return std::max(apparent, told + (cached.received - cached.requested));
}

bool bringsOwnRules(const HttpRequest& request) {
    return std::any_of(request.headers.begin(), request.headers.end(), [](const auto& header) {
        const std::string name = asciiLowercased(header.first);
        return name == "cache-control" || name == "pragma" || name == "range" || name.starts_with("if-");
    });
}

} // namespace

bool isCacheable(const HttpRequest& request) {
    return request.usesCache && request.method == "GET" && !request.body && !bringsOwnRules(request);
}

bool isStorable(const HttpResponse& response) {
    const Directives rules = cacheControl(response);
    if (response.status != 200 || rules.contains("no-store")) return false;
    for (const auto& [name, value] : response.headers)
        if (asciiEqualsIgnoringCase(name, "Vary") && value.find('*') != std::string::npos) return false;
    return rules.contains("max-age") || response.header("Expires") || response.header("ETag") ||
           response.header("Last-Modified");
}

bool isFresh(const CachedResponse& cached, Date now) {
    if (cacheControl(cached.response).contains("no-cache")) return false;
    if (now < cached.received) return false; // the clock was set back: no age can be told
    return lifetime(cached) > ageWhenReceived(cached) + (now - cached.received);
}

HttpRequest revalidating(HttpRequest request, const CachedResponse& cached) {
    if (auto tag = cached.response.header("ETag")) request.headers.emplace_back("If-None-Match", *tag);
    if (auto date = cached.response.header("Last-Modified"))
        request.headers.emplace_back("If-Modified-Since", *date);
    return request;
}

CachedResponse refreshed(CachedResponse cached, const HttpResponse& notModified, Date requested,
                         Date received) {
    HttpHeaders& headers = cached.response.headers;
    const auto isFraming = [](const std::string& name) {
        return asciiEqualsIgnoringCase(name, "Content-Length") ||
               asciiEqualsIgnoringCase(name, "Transfer-Encoding");
    };
    std::erase_if(headers, [&](const auto& header) {
        return asciiEqualsIgnoringCase(header.first, "Age") ||
               (notModified.header(header.first) && !isFraming(header.first));
    });
    for (const auto& header : notModified.headers)
        if (!isFraming(header.first)) headers.push_back(header);
    cached.requested = requested;
    cached.received = received;
    return cached;
}

std::string cacheKeyOfUrl(const Url& url) { return sha256Hex(url.absoluteString()); }

std::string cacheKey(const HttpRequest& request) {
    HttpHeaders sorted;
    for (const auto& [name, value] : request.headers)
        sorted.emplace_back(asciiLowercased(name), value);
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    const CertificatePolicy& trust = request.certificates;
    std::string rest = trust.pinnedCertificateFile.value_or("") + '\n' +
                       (trust.allowsInvalidCertificates ? '1' : '0') + (trust.validatesHostName ? '1' : '0');
    for (const auto& [name, value] : sorted)
        rest += '\n' + name + ':' + value;
    return cacheKeyOfUrl(request.url) + "-" + sha256Hex(rest);
}

} // namespace norvane
