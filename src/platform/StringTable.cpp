#include <norvane/platform/StringTable.h>

#include <algorithm>
#include <charconv>

namespace norvane {

std::string StringTable::format(std::string_view key, const std::vector<std::string>& arguments) const {
    const std::string pattern = text(key);
    std::string result;
    std::size_t at = 0;
    while (at < pattern.size()) {
        const std::size_t open = pattern.find('{', at);
        const std::size_t close = open == std::string::npos ? open : pattern.find('}', open);
        if (close == std::string::npos) break;
        std::size_t index = arguments.size();
        const char* const end = pattern.data() + close;
        const auto [stop, code] = std::from_chars(pattern.data() + open + 1, end, index);
        const bool isPlaceholder = code == std::errc() && stop == end && index < arguments.size();
        result.append(pattern, at, (isPlaceholder ? open : close + 1) - at);
        if (isPlaceholder) result += arguments[index];
        at = close + 1;
    }
    return result.append(pattern, std::min(at, pattern.size()));
}

} // namespace norvane
