#include "src/platform/http/CacheEntryFile.h"

#include <norvane/platform/Files.h>

#include <charconv>

namespace norvane {
namespace {

constexpr std::string_view kForm = "norvane-cache-1";

/// Takes what stands before the separator off the text; nothing when there is none.
std::optional<std::string_view> take(std::string_view& text, std::string_view separator) {
    const auto end = text.find(separator);
    if (end == std::string_view::npos) return std::nullopt;
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(end + separator.size());
    return taken;
}

template <class Number>
bool takeNumber(std::string_view& line, Number& number) {
    const auto text = take(line, " ");
    return text && std::from_chars(text->data(), text->data() + text->size(), number).ec == std::errc();
}

} // namespace

Data encodeCacheEntry(const CachedResponse& cached) {
    std::string content = std::to_string(cached.requested.time_since_epoch().count()) + ' ' +
                          std::to_string(cached.received.time_since_epoch().count()) + ' ' +
                          std::to_string(cached.response.status) + " \n";
    for (const auto& [name, value] : cached.response.headers)
        content += name + ": " + value + '\n';
    content += '\n';
    content += cached.response.body.view();
    return Data(std::string(kForm) + '\n' + sha256Hex(content) + '\n' + content);
}

std::optional<CachedResponse> decodeCacheEntry(const Data& bytes) {
    std::string_view rest = bytes.view();
    const auto form = take(rest, "\n");
    const auto checksum = take(rest, "\n");
    if (form != kForm || !checksum || *checksum != sha256Hex(rest)) return std::nullopt;

    CachedResponse cached;
    std::int64_t requested = 0;
    std::int64_t received = 0;
    auto facts = take(rest, "\n");
    if (!facts || !takeNumber(*facts, requested) || !takeNumber(*facts, received) ||
        !takeNumber(*facts, cached.response.status))
        return std::nullopt;
    cached.requested = Date(std::chrono::milliseconds(requested));
    cached.received = Date(std::chrono::milliseconds(received));
    while (true) {
        auto line = take(rest, "\n");
        if (!line) return std::nullopt;
        if (line->empty()) break;
        const auto name = take(*line, ": ");
        if (!name) return std::nullopt;
        cached.response.headers.emplace_back(*name, *line);
    }
    cached.response.body = Data(std::string(rest));
    return cached;
}

} // namespace norvane
