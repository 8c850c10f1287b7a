#include "sandbox/Operations.h"

namespace norvane::sandbox {

namespace {

/// Radio groups have a name where other tabs have an id.
std::string keyOf(const std::string& list) { return list == "radioGroupTabs" ? "groupName" : "tabId"; }

Answer tabs(const Call& call) {
    Json recipients = recipientsOf(call);
    const Json* recipient = findRecipient(recipients, call["recipientId"]);
    if (!recipient) return unknownRecipient();
    const Json* found = recipient->find("tabs");
    return jsonAnswer(found ? *found : Json(Json::Object()));
}

/// Adds, changes or deletes the tabs of the body, all of them or none; answers them as they are then.
Answer changeTabs(const Call& call) {
    const std::string& method = call.request.method;
    Json body;
    if (auto refusal = readBody(call.request, body)) return *refusal;
    return changeRecipients(call, [&](Json& recipients) {
        Json* recipient = findRecipient(recipients, call["recipientId"]);
        if (!recipient) return unknownRecipient();
        if (!recipient->find("tabs")) recipient->set("tabs", Json::Object());
        for (const auto& [list, entries] : Json(body).members()) {
            Json::Array* given = body.find(list)->mutableItems();
            if (!given) return malformed(list + " is not a list.");
            for (Json& tab : *given)
                if (tab.isObject()) tab.set("recipientId", call["recipientId"]);
            if (auto refusal = changeList(*recipient->find("tabs"), list, *given, keyOf(list), method))
                return *refusal;
        }
        return jsonAnswer(body, method == "POST" ? 201 : 200);
    });
}

constexpr const char* kDefinitions = "tabDefinitions";

Answer tabDefinitions(const Call& call) {
    const Json details = call.operations.details.read(call.detailFile());
    return jsonAnswer(Json::object({{"tabs", details.array(kDefinitions)}}));
}

Answer tabDefinition(const Call& call) {
    const Json details = call.operations.details.read(call.detailFile());
    for (const Json& definition : details.array(kDefinitions))
        if (definition.text("customTabId") == call["customTabId"]) return jsonAnswer(definition);
    return errorAnswer(404, "RESOURCE_NOT_FOUND", "The account has no tab definition of this id.");
}

Answer changeTabDefinition(const Call& call) {
    const std::string& method = call.request.method;
    Json body = Json::Object();
    if (method != "DELETE")
        if (auto refusal = readBody(call.request, body)) return *refusal;
    if (method == "POST" && (body.text("type").empty() || body.text("tabLabel").empty()))
        return malformed("type or tabLabel is missing.");
    if (method != "POST") body.set("customTabId", call["customTabId"]);
    return call.operations.details.change(call.detailFile(), kDefinitions, Json::Array(), [&](Json& kept) {
        Json holder = Json::object({{kDefinitions, kept}});
        Json::Array given{body};
        if (auto refusal = changeList(holder, kDefinitions, given, "customTabId", method)) return *refusal;
        kept = *holder.find(kDefinitions);
        return jsonAnswer(given.front(), method == "POST" ? 201 : 200);
    });
}

constexpr Route kTabRoutes[] = {
    {"GET", "/envelopes/{envelopeId}/recipients/{recipientId}/tabs", tabs},
    {"POST", "/envelopes/{envelopeId}/recipients/{recipientId}/tabs", changeTabs},
    {"PUT", "/envelopes/{envelopeId}/recipients/{recipientId}/tabs", changeTabs},
    {"DELETE", "/envelopes/{envelopeId}/recipients/{recipientId}/tabs", changeTabs},
    {"GET", "/templates/{templateId}/recipients/{recipientId}/tabs", tabs},
    {"POST", "/templates/{templateId}/recipients/{recipientId}/tabs", changeTabs},
    {"PUT", "/templates/{templateId}/recipients/{recipientId}/tabs", changeTabs},
    {"DELETE", "/templates/{templateId}/recipients/{recipientId}/tabs", changeTabs},
    {"GET", "/tab_definitions", tabDefinitions},
    {"POST", "/tab_definitions", changeTabDefinition},
    {"GET", "/tab_definitions/{customTabId}", tabDefinition},
    {"PUT", "/tab_definitions/{customTabId}", changeTabDefinition},
    {"DELETE", "/tab_definitions/{customTabId}", changeTabDefinition},
};

} // namespace

void addTabOperations(Router& router, const Operations& operations) {
    addRoutes(router, operations, kTabRoutes);
}

} // namespace norvane::sandbox
