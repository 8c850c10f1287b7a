#pragma once

#include <cstdint>
#include <string_view>

namespace norvane {

/// Domain of an answer whose status is not 2xx; the code is the HTTP status. The decoded body, if there is
/// one, stands under `kServiceResponseObjectKey`.
inline constexpr std::string_view kStatusErrorDomain = "NorvaneHTTPStatusErrorDomain";

/// Domain of requests that were never sent because an argument cannot go into one. The failure reason is one
/// of the following.
inline constexpr std::string_view kRequestErrorDomain = "NorvaneRequestErrorDomain";
inline constexpr std::string_view kInvalidPathParameterReason = "INVALID_PATH_PARAMETER";
inline constexpr std::string_view kInvalidHeaderReason = "INVALID_HEADER";
inline constexpr std::string_view kUnreadableFileReason = "UNREADABLE_FILE";

/// Domain of answers that are not of the expected type.
inline constexpr std::string_view kDeserializationErrorDomain = "NVESDeserializationErrorDomainKey";
enum class DeserializationError : std::int64_t {
    NullValue = 143509,
    UnknownType = 143528,
    TypeMismatch = 143553,
};

} // namespace norvane
