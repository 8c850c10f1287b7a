#include <norvane/platform/Value.h>

#include <charconv>
#include <cmath>
#include <limits>

namespace norvane {
namespace {

constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";

std::string_view skipWhiteSpace(std::string_view text) {
    const auto start = text.find_first_not_of(kWhiteSpace);
    return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

/// Truncates towards zero; what an integer cannot hold becomes the nearest that it can.
std::int64_t truncated(double number) {
    if (std::isnan(number)) return 0;
    constexpr double kLimit = 9223372036854775808.0;
    if (number >= kLimit) return std::numeric_limits<std::int64_t>::max();
    if (number < -kLimit) return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(number);
}

std::int64_t leadingInteger(std::string_view text) {
    text = skipWhiteSpace(text);
    const bool negative = text.starts_with('-');
    if (text.starts_with('+') && !text.substr(1).starts_with('-')) text.remove_prefix(1);
    std::int64_t number = 0;
    const auto [end, code] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (code == std::errc::result_out_of_range) {
        return negative ? std::numeric_limits<std::int64_t>::min() : std::numeric_limits<std::int64_t>::max();
    }
    return number;
}

} // namespace

std::optional<bool> Value::asBool() const {
    if (const auto* value = std::get_if<bool>(&storage_)) return *value;
    if (const auto* value = std::get_if<std::int64_t>(&storage_)) return *value != 0;
    if (const auto* value = std::get_if<double>(&storage_)) return *value != 0;
    return std::nullopt;
}

std::optional<std::int64_t> Value::asInteger() const {
    if (const auto* value = std::get_if<std::int64_t>(&storage_)) return *value;
    if (const auto* value = std::get_if<bool>(&storage_)) return *value ? 1 : 0;
    if (const auto* value = std::get_if<double>(&storage_)) return truncated(*value);
    return std::nullopt;
}

std::optional<double> Value::asDouble() const {
    if (const auto* value = std::get_if<double>(&storage_)) return *value;
    if (const auto* value = std::get_if<std::int64_t>(&storage_)) return static_cast<double>(*value);
    if (const auto* value = std::get_if<bool>(&storage_)) return *value ? 1 : 0;
    return std::nullopt;
}

const Array* Value::asArray() const {
    const auto* array = std::get_if<std::shared_ptr<const Array>>(&storage_);
    return array ? array->get() : nullptr;
}

const Dictionary* Value::asDictionary() const {
    const auto* dictionary = std::get_if<std::shared_ptr<const Dictionary>>(&storage_);
    return dictionary ? dictionary->get() : nullptr;
}

const Value& Value::operator[](std::string_view key) const {
    static const Value null;
    const Dictionary* dictionary = asDictionary();
    if (!dictionary) return null;
    const auto found = dictionary->find(key);
    return found == dictionary->end() ? null : found->second;
}

bool Value::boolValue() const {
    if (const auto number = asBool()) return *number;
    const std::string* string = asString();
    if (!string) return false;
    const std::string_view text = skipWhiteSpace(*string);
    return !text.empty() && std::string_view("tTyY123456789").find(text.front()) != std::string_view::npos;
}

std::int64_t Value::integerValue() const {
    if (const auto number = asInteger()) return *number;
    const std::string* string = asString();
    return string ? leadingInteger(*string) : 0;
}

std::optional<std::string> Value::stringValue() const {
    if (const std::string* string = asString()) return *string;
    if (const auto* value = std::get_if<double>(&storage_)) {
        // The shortest form of a round number would be "1e+05".
        if (std::abs(*value) < 1e15 && std::trunc(*value) == *value) return std::to_string(truncated(*value));
        char text[32];
        return std::string(text, std::to_chars(text, text + sizeof text, *value).ptr);
    }
    if (const auto number = asInteger()) return std::to_string(*number);
    return std::nullopt;
}

bool operator==(const Value& a, const Value& b) {
    if (a.isNumber() && b.isNumber()) {
        const bool anyDecimal =
            std::holds_alternative<double>(a.storage_) || std::holds_alternative<double>(b.storage_);
        return anyDecimal ? a.asDouble() == b.asDouble() : a.asInteger() == b.asInteger();
    }
    if (const Array* array = a.asArray()) return b.isArray() && *array == *b.asArray();
    if (const Dictionary* dictionary = a.asDictionary()) {
        return b.isDictionary() && *dictionary == *b.asDictionary();
    }
    return a.storage_ == b.storage_;
}

} // namespace norvane
