#include "src/platform/AsciiText.h"

#include <norvane/platform/Url.h>

#include <curl/curl.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <memory>

namespace norvane {
namespace {

/// Any scheme is a URL; segments of dots stay where they are.
constexpr unsigned kParsing = CURLU_NON_SUPPORT_SCHEME | CURLU_PATH_AS_IS;

using Handle = std::unique_ptr<CURLU, decltype(&curl_url_cleanup)>;
using Text = std::unique_ptr<char, decltype(&curl_free)>;

Handle parsed(const std::string& text) {
    Handle handle(curl_url(), &curl_url_cleanup);
    if (!handle || curl_url_set(handle.get(), CURLUPART_URL, text.c_str(), kParsing) != CURLUE_OK)
        handle.reset();
    return handle;
}

std::string part(const std::string& text, CURLUPart which, unsigned flags = 0) {
    const Handle handle = parsed(text);
    char* found = nullptr;
    if (!handle || curl_url_get(handle.get(), which, &found, flags) != CURLUE_OK) return {};
    return Text(found, &curl_free).get();
}

bool isUnreserved(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
           std::string_view("-._~").find(c) != std::string_view::npos;
}

template <class Keep>
std::string escapedUnless(std::string_view text, Keep keep) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string escaped;
    escaped.reserve(text.size());
    for (const char c : text) {
        if (keep(c)) {
            escaped += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        escaped += {'%', digits[byte >> 4], digits[byte & 15]};
    }
    return escaped;
}

/// Whether the text is a dotted IPv4 address whose first number is 127.
bool isLoopbackV4(std::string_view host) {
    std::array<unsigned, 4> numbers{};
    const char* at = host.data();
    const char* const end = at + host.size();
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (i > 0 && (at == end || *at++ != '.')) return false;
        const auto [next, error] = std::from_chars(at, end, numbers[i]);
        if (error != std::errc() || numbers[i] > 255) return false;
        at = next;
    }
    return at == end && numbers[0] == 127;
}

} // namespace

std::optional<Url> Url::parse(std::string_view text) {
    if (std::any_of(text.begin(), text.end(), isAsciiControl)) return std::nullopt;
    std::string owned(text);
    if (!parsed(owned)) return std::nullopt;
    Url url(std::move(owned));
    if (url.scheme() != "file" && url.host().empty()) return std::nullopt;
    return url;
}

Url Url::fromFilePath(std::string_view absolutePath) {
    return Url("file://" + escapedUnless(absolutePath, [](char c) { return c == '/' || isUnreserved(c); }));
}

std::string Url::scheme() const { return asciiLowercased(part(text_, CURLUPART_SCHEME)); }

std::string Url::host() const { return asciiLowercased(part(text_, CURLUPART_HOST)); }

std::string Url::path() const { return part(text_, CURLUPART_PATH); }

int Url::port() const {
    const std::string digits = part(text_, CURLUPART_PORT, CURLU_DEFAULT_PORT);
    int number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}

std::string Url::filePath() const {
    if (!isFile()) return {};
    const std::string escaped = path();
    int length = 0;
    const Text decoded(
        curl_easy_unescape(nullptr, escaped.c_str(), static_cast<int>(escaped.size()), &length), &curl_free);
    if (!decoded) return {};
    std::string result(decoded.get(), static_cast<std::size_t>(length));
    // A zero byte would end the path early in every system call.
    return result.find('\0') == std::string::npos ? result : std::string();
}

bool Url::isLoopback() const {
    const std::string name = host();
    return name == "localhost" || name == "[::1]" || isLoopbackV4(name);
}

Url Url::appending(std::string_view relativeReference) const {
    std::string base = text_.substr(0, text_.find_first_of("?#"));
    if (base.back() != '/') base += '/';
    return Url(base + escapedUnless(relativeReference, [](char c) {
                   return static_cast<unsigned char>(c) > 0x20 && static_cast<unsigned char>(c) < 0x7f &&
                          c != '#';
               }));
}

std::string percentEscaped(std::string_view text) { return escapedUnless(text, isUnreserved); }

} // namespace norvane
