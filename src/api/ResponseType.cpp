#include "src/api/ResponseType.h"

#include <norvane/api/RecordJson.h>

namespace norvane {
namespace {

/// What stands between the two, when that is anything.
std::optional<std::string_view> between(std::string_view text, std::string_view before,
                                        std::string_view after) {
    if (text.size() <= before.size() + after.size() || !text.starts_with(before) || !text.ends_with(after))
        return std::nullopt;
    return text.substr(before.size(), text.size() - before.size() - after.size());
}

/// X of "NSArray<X>" and "NSArray* /* X */".
std::optional<std::string_view> elementType(std::string_view name) {
    if (const auto inner = between(name, "NSArray<", ">")) return inner;
    return between(name, "NSArray* /* ", " */");
}

/// X of "NSDictionary<K, X>" and "NSDictionary* /* K, X */".
std::optional<std::string_view> valueType(std::string_view name) {
    auto both = between(name, "NSDictionary<", ">");
    if (!both) both = between(name, "NSDictionary* /* ", " */");
    if (!both) return std::nullopt;
    const std::size_t comma = both->find(", ", 1);
    if (comma == std::string_view::npos) return std::nullopt;
    return both->substr(comma + 2);
}

} // namespace

std::optional<ResponseType> ResponseType::parse(std::string_view text) {
    if (text.ends_with('*')) text.remove_suffix(1);
    while (text.ends_with(' '))
        text.remove_suffix(1);
    ResponseType type{Kind::Any, text, {}, nullptr};
    if (text == "NSObject" || text == "id" || text == "NSData") return type;
    if (text == "NSString") {
        type.kind = Kind::Text;
    } else if (text == "NSNumber") {
        type.kind = Kind::Number;
    } else if (text == "NSDate") {
        type.kind = Kind::Day;
    } else if (const auto element = elementType(text)) {
        type.kind = Kind::List;
        type.inner = *element;
    } else if (const auto value = valueType(text)) {
        type.kind = Kind::Members;
        type.inner = *value;
    } else {
        type.kind = Kind::Record;
        type.record = wireRecordType(text);
        if (!type.record) return std::nullopt;
    }
    return type;
}

} // namespace norvane
