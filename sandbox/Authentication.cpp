#include "sandbox/Authentication.h"

#include "sandbox/Json.h"
#include "sandbox/Text.h"

namespace norvane::sandbox {

namespace {

constexpr const char* kHeader = "X-Norvane-Authentication";

Answer unauthorized(std::string_view code, std::string_view message) {
    return errorAnswer(401, code, message);
}

/// What the header holds; refusal instead when it is missing or malformed.
std::optional<Answer> readHeader(const Request& request, Json& given) {
    const std::string* text = request.header(kHeader);
    if (!text)
        return unauthorized("AUTHENTICATION_MISSING", "The header X-Norvane-Authentication is missing.");
    JsonResult parsed = parseJson(*text);
    bool wellFormed = parsed.ok() && parsed.value.isObject();
    for (const auto& [key, value] : parsed.value.members()) {
        const bool known = key == "Username" || key == "Password" || key == "IntegratorKey";
        wellFormed = wellFormed && known && value.isText();
    }
    if (!wellFormed)
        return errorAnswer(400, "AUTHENTICATION_MALFORMED",
                           "X-Norvane-Authentication is not JSON with Username, Password and IntegratorKey.");
    given = std::move(parsed.value);
    return std::nullopt;
}

std::optional<Answer> refusal(const Request& request, const Credentials& credentials, bool signingIn) {
    Json given;
    if (auto problem = readHeader(request, given)) return problem;
    if (given.text("IntegratorKey") != credentials.integratorKey)
        return unauthorized("INTEGRATOR_KEY_UNKNOWN", "The integrator key is not known.");
    if (const std::string* bearer = request.header("Authorization")) {
        if (*bearer == "Bearer " + credentials.accessToken) return std::nullopt;
        return unauthorized("AUTHORIZATION_INVALID_TOKEN",
                            "The access token is missing, expired or unknown.");
    }
    const std::string& name = given.text("Username");
    const std::string& password = given.text("Password");
    if (name == credentials.userId && password == credentials.apiPassword) return std::nullopt;
    const bool known =
        equalsIgnoringCase(name, credentials.userName) || equalsIgnoringCase(name, credentials.email);
    if (signingIn && known && password == credentials.password) return std::nullopt;
    return unauthorized("USER_AUTHENTICATION_FAILED", "The user name or the password is not valid.");
}

} // namespace

std::optional<Answer> refusalOf(const Request& request, const Credentials& credentials) {
    return refusal(request, credentials, false);
}

std::optional<Answer> signInRefusalOf(const Request& request, const Credentials& credentials) {
    return refusal(request, credentials, true);
}

} // namespace norvane::sandbox
