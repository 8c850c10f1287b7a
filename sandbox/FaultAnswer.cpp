#include "sandbox/FaultAnswer.h"

#include "sandbox/Json.h"

namespace norvane::sandbox {

namespace {

constexpr std::string_view kPortalPage =
    "<!DOCTYPE html><html><head><title>Welcome to Guest Wi-Fi</title></head><body><h1>Welcome</h1>"
    "<p>Please accept the terms of use to go online.</p><form method=\"post\" action=\"/accept\">"
    "<button>Connect</button></form></body></html>";

} // namespace

Answer answerOf(const Fault& fault) {
    if (fault.kind == Fault::Kind::Portal)
        return {200, "text/html; charset=utf-8", std::string(kPortalPage), {}};
    Answer answer = errorAnswer(fault.status, "FAULT_REQUESTED", "This answer was asked for as a fault.");
    if (fault.body.empty()) return answer;
    answer.body = fault.body;
    if (!parseJson(fault.body).ok()) answer.contentType = "text/html; charset=utf-8";
    return answer;
}

} // namespace norvane::sandbox
