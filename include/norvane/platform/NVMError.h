#pragma once

#include <norvane/platform/Value.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace norvane {

/// User-information keys of every error.
inline constexpr std::string_view kLocalizedDescriptionKey = "NSLocalizedDescription";
inline constexpr std::string_view kFailureReasonKey = "NSLocalizedFailureReason";
/// The error that led to this one, as a `Value::object(NVMError)`.
inline constexpr std::string_view kUnderlyingErrorKey = "NSUnderlyingError";

/// An expected failure: a value, handed over as `std::optional<NVMError>` or inside a `Result`.
/// `code` is 0 for errors of the kit's own, else the HTTP status or the cause's own number.
struct NVMError {
    std::string domain;
    std::int64_t code = 0;
    Dictionary userInfo;

    NVMError() = default;
    NVMError(std::string errorDomain, std::int64_t errorCode, Dictionary information)
        : domain(std::move(errorDomain))
        , code(errorCode)
        , userInfo(std::move(information)) {}
    /// An error with a description and, when not empty, a failure reason.
    static NVMError make(std::string domain, std::int64_t code, std::string description,
                         std::string failureReason = {});

    /// The sentence for the user; without one, "The operation couldn't be completed. (<domain> error
    /// <code>.)".
    std::string localizedDescription() const;
    /// The failure reason, or the empty text.
    std::string failureReason() const;

    friend bool operator==(const NVMError&, const NVMError&) = default;
};

} // namespace norvane
