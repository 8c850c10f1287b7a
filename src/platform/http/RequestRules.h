#pragma once

#include <norvane/platform/HttpSession.h>

namespace norvane {

/// Why a session must not send this request, as a `TransportError::Refused`; nothing when it may. Every
/// session asks this before anything else.
Failure refusal(const HttpRequest& request);

/// Whether the text is a token of RFC 9110: what methods and header names are made of.
bool isHttpToken(std::string_view text);

} // namespace norvane
