#include "sandbox/Operations.h"
#include "sandbox/Template.h"
#include "sandbox/Text.h"

#include <chrono>

namespace norvane::sandbox {

namespace {

/// A member as the envelope or the template was made with it.
Json initialOf(const Call& call, const char* member) {
    const Json made = call.source ? templateJson(*call.source, ownerJson(call.operations.credentials))
                                  : parseJson(call.envelope->json).value;
    const Json* found = made.find(member);
    return found ? *found : Json(Json::Object());
}

Json detailOf(const Call& call, const char* member) {
    const Json details = call.operations.details.read(call.detailFile());
    const Json* found = details.find(member);
    return found ? *found : initialOf(call, member);
}

Answer customFields(const Call& call) {
    Json fields = detailOf(call, "customFields");
    for (const char* list : {"textCustomFields", "listCustomFields"})
        if (!fields.find(list)) fields.set(list, Json::Array());
    return jsonAnswer(fields);
}

Answer changeCustomFields(const Call& call) {
    const std::string& method = call.request.method;
    Json body;
    if (auto refusal = readBody(call.request, body)) return *refusal;
    return call.operations.details.change(
        call.detailFile(), "customFields", initialOf(call, "customFields"), [&](Json& kept) {
            for (const char* list : {"textCustomFields", "listCustomFields"}) {
                if (!body.find(list)) continue;
                Json::Array* given = body.find(list)->mutableItems();
                if (!given) return malformed(std::string(list) + " is not a list.");
                if (auto refusal = changeList(kept, list, *given, "fieldId", method)) return *refusal;
            }
            return jsonAnswer(body, method == "POST" ? 201 : 200);
        });
}

/// Shows a detail that is one object, sets members of it, or (DELETE) empties it.
Answer objectDetail(const Call& call, const char* member) {
    const std::string& method = call.request.method;
    if (method == "GET") return jsonAnswer(detailOf(call, member));
    Json body = Json::Object();
    if (method != "DELETE")
        if (auto refusal = readBody(call.request, body)) return *refusal;
    return call.operations.details.change(call.detailFile(), member, initialOf(call, member),
                                          [&](Json& kept) {
                                              const Json before = kept;
                                              for (const auto& [key, value] : body.members())
                                                  kept.set(key, value);
                                              if (method != "DELETE")
                                                  return jsonAnswer(kept, method == "POST" ? 201 : 200);
                                              kept = Json::Object();
                                              return jsonAnswer(before);
                                          });
}

Answer notification(const Call& call) { return objectDetail(call, "notification"); }
Answer emailSettings(const Call& call) { return objectDetail(call, "emailSettings"); }

constexpr unsigned long long kUsualSeconds = 300;
constexpr unsigned long long kMostSeconds = 86'400;

/// A lock that has run out is none.
bool isLocked(const Json& lock) { return lock.text("lockedUntilDateTime") > nowText(); }

Answer unlocked() { return errorAnswer(404, "LOCK_NOT_FOUND", "Nobody has locked it."); }

Answer lock(const Call& call) {
    const Json found = detailOf(call, "lockInformation");
    return isLocked(found) ? jsonAnswer(found) : unlocked();
}

/// Locks what is free, prolongs a lock (PUT) or ends it (DELETE).
Answer changeLock(const Call& call) {
    const std::string& method = call.request.method;
    Json body = Json::Object();
    if (method != "DELETE")
        if (auto refusal = readBody(call.request, body)) return *refusal;
    const std::string& wanted = body.text("lockDurationInSeconds");
    const auto seconds = wanted.empty() ? std::optional(kUsualSeconds) : wholeNumber(wanted);
    if (!seconds || *seconds == 0 || *seconds > kMostSeconds)
        return malformed("lockDurationInSeconds must be a whole number up to 86400.");
    return call.operations.details.change(
        call.detailFile(), "lockInformation", Json::Object(), [&](Json& kept) {
            const bool locks = method == "POST";
            if (locks && isLocked(kept))
                return errorAnswer(409, "EDIT_LOCK_IS_TAKEN",
                                   "It is locked until " + kept.text("lockedUntilDateTime") + ".");
            if (!locks && !isLocked(kept)) return unlocked();
            if (locks) {
                kept = body;
                kept.set("lockToken", newUuid()).set("lockedByUser", ownerJson(call.operations.credentials));
            }
            const auto until = std::chrono::system_clock::now() + std::chrono::seconds(*seconds);
            kept.set("lockDurationInSeconds", std::to_string(*seconds));
            kept.set("lockedUntilDateTime", timeText(until));
            const Json shown = kept;
            if (method == "DELETE") kept = Json::Object();
            return jsonAnswer(shown, locks ? 201 : 200);
        });
}

// Envelopes and templates have the same but for e-mail settings.
constexpr Route kDetailRoutes[] = {
    {"GET", "/envelopes/{envelopeId}/custom_fields", customFields},
    {"POST", "/envelopes/{envelopeId}/custom_fields", changeCustomFields},
    {"PUT", "/envelopes/{envelopeId}/custom_fields", changeCustomFields},
    {"DELETE", "/envelopes/{envelopeId}/custom_fields", changeCustomFields},
    {"GET", "/envelopes/{envelopeId}/notification", notification},
    {"PUT", "/envelopes/{envelopeId}/notification", notification},
    {"GET", "/envelopes/{envelopeId}/email_settings", emailSettings},
    {"POST", "/envelopes/{envelopeId}/email_settings", emailSettings},
    {"PUT", "/envelopes/{envelopeId}/email_settings", emailSettings},
    {"DELETE", "/envelopes/{envelopeId}/email_settings", emailSettings},
    {"GET", "/envelopes/{envelopeId}/lock", lock},
    {"POST", "/envelopes/{envelopeId}/lock", changeLock},
    {"PUT", "/envelopes/{envelopeId}/lock", changeLock},
    {"DELETE", "/envelopes/{envelopeId}/lock", changeLock},
    {"GET", "/templates/{templateId}/custom_fields", customFields},
    {"POST", "/templates/{templateId}/custom_fields", changeCustomFields},
    {"PUT", "/templates/{templateId}/custom_fields", changeCustomFields},
    {"DELETE", "/templates/{templateId}/custom_fields", changeCustomFields},
    {"GET", "/templates/{templateId}/notification", notification},
    {"PUT", "/templates/{templateId}/notification", notification},
    {"GET", "/templates/{templateId}/lock", lock},
    {"POST", "/templates/{templateId}/lock", changeLock},
    {"PUT", "/templates/{templateId}/lock", changeLock},
    {"DELETE", "/templates/{templateId}/lock", changeLock},
};

} // namespace

void addDetailOperations(Router& router, const Operations& operations) {
    addRoutes(router, operations, kDetailRoutes);
}

} // namespace norvane::sandbox
