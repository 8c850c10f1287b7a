#pragma once

#include <norvane/platform/HttpSession.h>

#include <string>

namespace norvane {

NVMError transportError(TransportError cause, std::string description, Dictionary evidence);

/// The user information that every transport error begins with: where the request went.
Dictionary evidence(const Url& url);

/// The error for libcurl's result, with the cause's own code where the kit has one. `verifyResult` is
/// OpenSSL's verdict on the server's certificate.
NVMError curlError(int curlCode, long verifyResult, const std::string& detail, Dictionary evidence);

} // namespace norvane
