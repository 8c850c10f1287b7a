#include "src/platform/AsciiText.h"

#include <norvane/api/NVESSanitizer.h>
#include <norvane/api/RecordJson.h>
#include <norvane/platform/DateFormat.h>
#include <norvane/platform/Json.h>
#include <norvane/platform/NVMException.h>

#include <algorithm>

namespace norvane {
namespace {

constexpr std::string_view kJsonType = "application/json";

[[noreturn]] void refuse(const Value& value) {
    const std::string_view what = value.asData()         ? "bytes"
                                  : value.isDictionary() ? "dictionary"
                                  : value.isArray()      ? "list"
                                  : value.isNull()       ? "null"
                                                         : "object";
    throw NVMException("InvalidObjectArgumentException",
                       "*** The argument object: " + std::string(what) + " is invalid");
}

} // namespace

Value NVESSanitizer::sanitizeForSerialization(const Value& value) const {
    if (value.isNull() || value.isNumber() || value.isString()) return value;
    if (const Date* date = value.asDate()) return dateParameterToString(*date);
    if (const Array* array = value.asArray()) {
        Array result;
        for (const Value& element : *array)
            result.push_back(sanitizeForSerialization(element));
        return result;
    }
    if (const Dictionary* dictionary = value.asDictionary()) {
        Dictionary result;
        for (const auto& [key, member] : *dictionary)
            result.emplace(key, sanitizeForSerialization(member));
        return result;
    }
    refuse(value);
}

Value NVESSanitizer::sanitizeForSerialization(const RecordType& type, const void* record) const {
    auto value = parseJson(writeRecord(type, record));
    return value ? *std::move(value) : Value();
}

std::string NVESSanitizer::parameterToString(const Value& value) const {
    if (const auto text = value.stringValue()) return *text;
    if (const Date* date = value.asDate()) return dateParameterToString(*date);
    const Array* array = value.asArray();
    if (!array) refuse(value);
    std::string joined;
    for (const Value& element : *array) {
        if (&element != &array->front()) joined += ',';
        joined += parameterToString(element);
    }
    return joined;
}

std::string NVESSanitizer::dateParameterToString(Date date) const { return formatIso8601(date); }

std::string NVESSanitizer::selectHeaderAccept(const std::vector<std::string>& accepts) const {
    std::string joined;
    for (const std::string& type : accepts) {
        if (isJsonType(type)) return std::string(kJsonType);
        if (!joined.empty()) joined += ", ";
        joined += asciiLowercased(type);
    }
    return joined;
}

std::string NVESSanitizer::selectHeaderContentType(const std::vector<std::string>& contentTypes) const {
    const bool anyJson = std::any_of(contentTypes.begin(), contentTypes.end(), isJsonType);
    return anyJson || contentTypes.empty() ? std::string(kJsonType) : asciiLowercased(contentTypes.front());
}

bool NVESSanitizer::isJsonType(std::string_view mimeType) {
    const std::string type = asciiLowercased(mimeType);
    const std::size_t application = type.find("application");
    return application != std::string::npos && type.find("json", application + 11) != std::string::npos;
}

} // namespace norvane
