#pragma once

#include <norvane/platform/Result.h>
#include <norvane/platform/Value.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace norvane {

/// Domain of texts that are no acceptable JSON; the code is a `JsonError`.
inline constexpr std::string_view kJsonErrorDomain = "NorvaneJSONErrorDomain";

/// User-information key: where in the document a refused member stands, as a JSON pointer
/// ("/signers/0/name"). Only errors that are found in a well-formed document carry it.
inline constexpr std::string_view kJsonPathKey = "path";

enum class JsonError : std::int64_t {
    Malformed = 1,    ///< no JSON, or no valid UTF-8
    TooLarge = 2,     ///< over `kJsonMaximumSize`
    TooDeep = 3,      ///< over `kJsonMaximumDepth`
    BadNumber = 4,    ///< a number beyond the range of a double
    DuplicateKey = 5, ///< an object names one key twice
};

inline constexpr std::size_t kJsonMaximumSize = std::size_t{64} << 20; ///< bytes
inline constexpr std::size_t kJsonMaximumDepth = 64;                   ///< arrays and objects inside another

/// Reads one whole JSON document. Integers of 64 bits stay integers, larger ones become doubles. Error texts
/// never quote the document.
Result<Value> parseJson(std::string_view text);

/// The members of the object that a JSON pointer ("/defaults/values") finds in the document, in the order of
/// the document; none where it finds no object.
Result<std::vector<std::pair<std::string, Value>>> parseJsonMembers(std::string_view text,
                                                                    std::string_view pointer);

/// Writes a value as UTF-8 JSON, keys in bytewise order. Data becomes base64 text, a date ISO 8601 text in
/// UTC with milliseconds and "Z"; what JSON cannot say (not a number, infinities, objects by reference)
/// becomes null. Ill-formed UTF-8 becomes U+FFFD. `pretty` breaks lines and indents by two blanks.
std::string writeJson(const Value& value, bool pretty = false);

} // namespace norvane
