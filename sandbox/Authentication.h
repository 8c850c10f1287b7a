#pragma once

#include "sandbox/Credentials.h"
#include "sandbox/HttpMessage.h"

#include <optional>

namespace norvane::sandbox {

/// Nothing when the request proves that it comes from the user, else the answer that refuses it. Accepted are
/// {"Username": user id, "Password": API password, "IntegratorKey"} in the header X-Norvane-Authentication,
/// and the access token as "Authorization: Bearer ..." beside {"IntegratorKey"}.
std::optional<Answer> refusalOf(const Request& request, const Credentials& credentials);

/// The same for signing in: besides, the user name or e-mail with the password is accepted.
std::optional<Answer> signInRefusalOf(const Request& request, const Credentials& credentials);

} // namespace norvane::sandbox
