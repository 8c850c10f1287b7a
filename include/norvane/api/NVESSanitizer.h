#pragma once

#include <norvane/platform/Value.h>
#include <norvane/record/Record.h>

#include <string>
#include <string_view>
#include <vector>

namespace norvane {

/// Turns the values of parameters and bodies into what can be sent. Without state; any thread may call. A
/// value that cannot be sent (bytes, an object by reference) throws NVMException
/// "InvalidObjectArgumentException".
class NVESSanitizer {
  public:
    /// Plain values for JSON: dates become ISO 8601 text, lists and dictionaries go element by element.
    Value sanitizeForSerialization(const Value& value) const;
    /// A wire record as a dictionary of plain values.
    Value sanitizeForSerialization(const RecordType& type, const void* record) const;
    /// Text as it is, numbers as their text, dates as ISO 8601 text, a list as its elements' texts joined by
    /// ",".
    std::string parameterToString(const Value& value) const;
    std::string dateParameterToString(Date date) const;
    /// "application/json" when any of the MIME types is JSON, else all of them, lower-cased, joined by ", ".
    std::string selectHeaderAccept(const std::vector<std::string>& accepts) const;
    /// "application/json" when there is none or any is JSON, else the first, lower-cased.
    std::string selectHeaderContentType(const std::vector<std::string>& contentTypes) const;
    /// Whether the MIME type matches "(.*)application(.*)json(.*)", ignoring case.
    static bool isJsonType(std::string_view mimeType);
};

} // namespace norvane
