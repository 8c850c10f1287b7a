#pragma once

#include <norvane/api/NVESErrors.h>
#include <norvane/platform/NVMError.h>

#include <string>
#include <string_view>

namespace norvane {

/// What an error text says of an answer: its first 200 bytes, without secrets, or only its length when it is
/// no UTF-8 or its secrets cannot be told apart.
std::string quotedAnswer(std::string_view received);

/// "Received response [%@] is not an object of type %@". A path says where in the answer it stands.
NVMError typeMismatch(std::string_view received, std::string_view type, std::string path = {});
/// "Received response contains null value in dictionary or array response"
NVMError nullInResponse();
/// "Unknown response expected type %@ [response: %@]"
NVMError unknownType(std::string_view type, std::string_view received);

} // namespace norvane
