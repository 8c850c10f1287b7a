#pragma once

#include <norvane/platform/NVMError.h>

#include <optional>
#include <string>
#include <string_view>

namespace norvane {

/// User-information key of the decoded answer body that the service sent with an error: a dictionary, or the
/// body's text when it was no JSON.
inline constexpr std::string_view kServiceResponseObjectKey = "NVESResponseObject";
/// User-information key of a list of records that describe an error, as `Value::object(NVMAPIErrorResponse)`.
inline constexpr std::string_view kMapperErrorObjectsKey = "RKObjectMapperErrorObjectsKey";

/// The service's error record.
struct NVMAPIErrorResponse {
    std::optional<std::string> errorCode;
    std::optional<std::string> message;

    NVMAPIErrorResponse() = default;
    NVMAPIErrorResponse(std::string code, std::string text)
        : errorCode(std::move(code))
        , message(std::move(text)) {}
    /// Reads "errorCode" and "message"; what is missing or no text stays absent.
    explicit NVMAPIErrorResponse(const Dictionary& dictionary);

    /// "<errorCode>: <message>"; an absent field reads "(null)".
    std::string description() const;

    friend bool operator==(const NVMAPIErrorResponse&, const NVMAPIErrorResponse&) = default;
};

/// The first service record among the objects listed under `kMapperErrorObjectsKey`. Without such a list, or
/// with an empty one, a record of the error's domain and description; nothing when the list holds no record.
std::optional<NVMAPIErrorResponse> NVMAPIErrorResponseOf(const NVMError& error);
/// The fields of that record.
std::optional<std::string> NVMAPIErrorResponseCode(const NVMError& error);
std::optional<std::string> NVMAPIErrorResponseMessage(const NVMError& error);

} // namespace norvane
