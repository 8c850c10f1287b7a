#pragma once

#include <norvane/api/NVESResult.h>
#include <norvane/platform/Data.h>
#include <norvane/platform/Result.h>

#include <string_view>

namespace norvane {

/// Turns answer bodies into results by the text that names the expected type (a last "*" is dropped):
///  - "NSObject", "id", "NSData": the value as it is;
///  - "NSString": text; "NSNumber": a number, decimal text, "true" or "false"; "NSDate": ISO 8601 text;
///  - "NSArray<X>", "NSArray* /* X */": a list of X;
///  - "NSDictionary<K, X>", "NSDictionary* /* K, X */": a dictionary of X;
///  - else the name of a wire record.
/// An absent value or type gives nothing. Errors are of `kDeserializationErrorDomain`; their text quotes no
/// more than the start of what was received.
class NVESResponseDeserializer {
  public:
    /// Whether a null inside a list or dictionary is the error 143509; otherwise it is nothing.
    bool treatNullAsError = false;

    /// A body that is meant to be JSON. One that is not counts as its text, which only "NSString" and the
    /// basic types accept (as bytes, where it is not UTF-8 either).
    Result<NVESResult> deserialize(std::string_view json, std::string_view type) const;
    /// A body that is not meant to be JSON: its bytes, or its text for "NSString".
    Result<NVESResult> deserializeBytes(const Data& body, std::string_view type) const;
};

} // namespace norvane
