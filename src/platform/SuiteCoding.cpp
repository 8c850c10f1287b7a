#include "src/platform/SuiteCoding.h"

#include <norvane/platform/DateFormat.h>
#include <norvane/platform/Json.h>

#include <cmath>

namespace norvane {

namespace {

constexpr const char* kDate = "$date";
constexpr const char* kDecimal = "$decimal";
constexpr const char* kDictionary = "$dictionary";

Value encode(const Value& value);
Value decode(const Value& value);

Dictionary mapped(const Dictionary& dictionary, Value (*mapping)(const Value&)) {
    Dictionary result;
    for (const auto& [key, value] : dictionary)
        result.emplace(key, mapping(value));
    return result;
}

Array mapped(const Array& array, Value (*mapping)(const Value&)) {
    Array result;
    for (const Value& value : array)
        result.push_back(mapping(value));
    return result;
}

bool looksMarked(const Dictionary& dictionary) {
    return dictionary.size() == 1 && dictionary.begin()->first.starts_with('$');
}

Value encode(const Value& value) {
    if (const Date* date = value.asDate()) return Dictionary{{kDate, formatIso8601(*date)}};
    if (const Array* array = value.asArray()) return mapped(*array, encode);
    if (const Dictionary* dictionary = value.asDictionary()) {
        const Dictionary encoded = mapped(*dictionary, encode);
        return looksMarked(*dictionary) ? Dictionary{{kDictionary, encoded}} : encoded;
    }
    const bool isDecimal = value.isNumber() && !value.isInteger() && !value.isBool();
    if (isDecimal && std::trunc(*value.asDouble()) == *value.asDouble()) {
        return Dictionary{{kDecimal, *value.stringValue()}};
    }
    return value;
}

Value decodeMarked(const std::string& mark, const Value& content) {
    if (mark == kDictionary && content.isDictionary()) return mapped(*content.asDictionary(), decode);
    const std::string* text = content.asString();
    if (mark == kDate && text) {
        if (const auto date = parseIso8601(*text)) return *date;
    }
    if (mark == kDecimal && text) {
        const auto number = parseJson(*text);
        if (number && number->isNumber()) return number->asDouble();
    }
    return Dictionary{{mark, decode(content)}};
}

Value decode(const Value& value) {
    if (const Array* array = value.asArray()) return mapped(*array, decode);
    const Dictionary* dictionary = value.asDictionary();
    if (!dictionary) return value;
    if (!looksMarked(*dictionary)) return mapped(*dictionary, decode);
    return decodeMarked(dictionary->begin()->first, dictionary->begin()->second);
}

} // namespace

std::string encodeSuite(const Dictionary& suite) { return writeJson(mapped(suite, encode), true); }

std::optional<Dictionary> decodeSuite(std::string_view text) {
    const auto json = parseJson(text);
    if (!json || !json->isDictionary()) return std::nullopt;
    return mapped(*json->asDictionary(), decode);
}

} // namespace norvane
