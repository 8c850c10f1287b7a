#include "sandbox/DocumentCheck.h"
#include "sandbox/EnvelopeCheck.h"
#include "sandbox/Operations.h"
#include "sandbox/Text.h"

#include <set>

namespace norvane::sandbox {

namespace {

using EnvelopeOperation =
    std::function<Answer(const std::string& envelopeId, const Request&, const PathParameters&)>;

/// The operation on an envelope that exists.
Router::Operation onEnvelope(const Operations& operations, EnvelopeOperation operation) {
    return [&operations, operation = std::move(operation)](const Request& request,
                                                           const PathParameters& parameters) {
        const auto envelope = operations.envelopes.find(parameters.find("envelopeId")->second);
        if (!envelope)
            return errorAnswer(404, "ENVELOPE_DOES_NOT_EXIST", "The account has no envelope of this id.");
        return operation(envelope->envelopeId, request, parameters);
    };
}

Answer unknownRecipient() {
    return errorAnswer(404, "RECIPIENT_NOT_IN_ENVELOPE", "The envelope has no recipient of this id.");
}

/// The recipient of any kind; null when there is none.
Json* findRecipient(Json& recipients, std::string_view recipientId) {
    for (const auto& [list, entries] : recipients.members()) {
        Json::Array* items = recipients.find(list)->mutableItems();
        if (!items) continue;
        for (Json& recipient : *items)
            if (recipient.text("recipientId") == recipientId) return &recipient;
    }
    return nullptr;
}

void recount(Json& recipients) {
    std::size_t count = 0;
    for (const auto& [list, entries] : recipients.members())
        count += entries.items().size();
    recipients.set("recipientCount", std::to_string(count));
}

/// Reads an object out of the body; the answer refuses anything else.
std::optional<Answer> readBody(const Request& request, Json& body) {
    JsonResult parsed = parseJson(request.body);
    if (!parsed.ok() || !parsed.value.isObject())
        return errorAnswer(400, "INVALID_REQUEST_BODY", "The body is not a JSON object. " + parsed.error);
    body = std::move(parsed.value);
    if (const auto problem = checkScalars(body); !problem.empty())
        return errorAnswer(400, "INVALID_REQUEST_BODY", problem);
    return std::nullopt;
}

Answer listRecipients(const Operations& operations, const std::string& envelopeId, const Request& request) {
    Json recipients = operations.envelopes.recipients(envelopeId);
    if (request.queryValue("include_tabs") == "true") return jsonAnswer(recipients);
    for (const auto& [list, entries] : Json(recipients).members())
        if (Json::Array* items = recipients.find(list)->mutableItems())
            for (Json& recipient : *items)
                recipient.erase("tabs");
    return jsonAnswer(recipients);
}

Answer addRecipients(const Operations& operations, const std::string& envelopeId, const Request& request) {
    Json body;
    if (auto refusal = readBody(request, body)) return *refusal;
    return operations.envelopes.changeRecipients(envelopeId, [&](Json& recipients) {
        for (const auto& [list, entries] : body.members())
            for (const Json& added : entries.items()) {
                const std::string& id = added.text("recipientId");
                if (id.empty() || findRecipient(recipients, id))
                    return errorAnswer(400, "INVALID_RECIPIENT_ID",
                                       "A recipientId is missing or taken: " + id);
                if (!recipients.find(list)) recipients.set(list, Json::Array());
                recipients.find(list)->push(added);
            }
        recount(recipients);
        return jsonAnswer(body, 201);
    });
}

Answer deleteRecipients(const Operations& operations, const std::string& envelopeId, const Request& request) {
    Json body;
    if (auto refusal = readBody(request, body)) return *refusal;
    return operations.envelopes.changeRecipients(envelopeId, [&](Json& recipients) {
        for (const auto& [list, entries] : body.members())
            for (const Json& unwanted : entries.items()) {
                const std::string& id = unwanted.text("recipientId");
                Json* kept = recipients.find(list);
                Json::Array* items = kept ? kept->mutableItems() : nullptr;
                const auto same = [&](const Json& recipient) { return recipient.text("recipientId") == id; };
                if (!items || std::erase_if(*items, same) == 0) return unknownRecipient();
            }
        recount(recipients);
        return jsonAnswer(body);
    });
}

/// Answers the tabs with the ids that they were given.
Answer addTabs(const Operations& operations, const std::string& envelopeId, const Request& request,
               const std::string& recipientId) {
    Json body;
    if (auto refusal = readBody(request, body)) return *refusal;
    return operations.envelopes.changeRecipients(envelopeId, [&](Json& recipients) {
        Json* recipient = findRecipient(recipients, recipientId);
        if (!recipient) return unknownRecipient();
        if (!recipient->find("tabs")) recipient->set("tabs", Json::Object());
        Json* tabs = recipient->find("tabs");
        for (const auto& [list, entries] : Json(body).members()) {
            Json::Array* items = body.find(list)->mutableItems();
            if (!items) return errorAnswer(400, "INVALID_REQUEST_BODY", list + " is not a list");
            if (!tabs->find(list)) tabs->set(list, Json::Array());
            for (Json& tab : *items) {
                if (tab.text("tabId").empty()) tab.set("tabId", newUuid());
                tab.set("recipientId", recipientId);
                tabs->find(list)->push(tab);
            }
        }
        return jsonAnswer(body, 201);
    });
}

Answer tabsOf(const Operations& operations, const std::string& envelopeId, const std::string& recipientId) {
    Json recipients = operations.envelopes.recipients(envelopeId);
    const Json* recipient = findRecipient(recipients, recipientId);
    if (!recipient) return unknownRecipient();
    const Json* tabs = recipient->find("tabs");
    return jsonAnswer(tabs ? *tabs : Json(Json::Object()));
}

/// Whether the request's user is this recipient, by id or else by name and e-mail.
bool isMeant(const Json& recipient, const Json& view) {
    if (!view.text("recipientId").empty()) return recipient.text("recipientId") == view.text("recipientId");
    const bool inPerson = !recipient.text("signerName").empty();
    const std::string& name = recipient.text(inPerson ? "signerName" : "name");
    const std::string& email = recipient.text(inPerson ? "signerEmail" : "email");
    return !name.empty() && equalsIgnoringCase(name, view.text("userName")) &&
           equalsIgnoringCase(email, view.text("email"));
}

/// The address has "Member" in its path, which clients turn into "signing", and a query that they append to.
Answer recipientView(const Operations& operations, const std::string& envelopeId, const Request& request) {
    Json view;
    if (auto refusal = readBody(request, view)) return *refusal;
    for (const char* key : {"returnUrl", "authenticationMethod"})
        if (view.text(key).empty())
            return errorAnswer(400, "INVALID_REQUEST_PARAMETER", std::string(key) + " is missing.");
    bool known = false;
    forEachSigner(operations.envelopes.recipients(envelopeId),
                  [&](const Json& signer) { known = known || isMeant(signer, view); });
    if (!known) return errorAnswer(400, "UNKNOWN_ENVELOPE_RECIPIENT", "The envelope has no such recipient.");
    return jsonAnswer(Json::object({{"url", operations.url + "/Member/Norvane.aspx?t=" + newUuid()}}), 201);
}

bool isImageType(const std::string& type) {
    static const std::set<std::string> types{"signature", "signature_image", "initials", "initials_image"};
    return types.contains(type);
}

Answer image(const Operations& operations, const std::string& envelopeId, const Request& request,
             const PathParameters& parameters) {
    const std::string& recipientId = parameters.find("recipientId")->second;
    const std::string& type = parameters.find("imageType")->second;
    Json recipients = operations.envelopes.recipients(envelopeId);
    if (!findRecipient(recipients, recipientId)) return unknownRecipient();
    if (!isImageType(type)) return errorAnswer(404, "RESOURCE_NOT_FOUND", "There is no such image.");
    if (request.method == "GET") {
        Answer answer;
        const auto bytes = operations.envelopes.image(envelopeId, recipientId, type);
        if (!bytes) return errorAnswer(404, "IMAGE_NOT_FOUND", "The recipient has no such image.");
        answer.contentType = "image/png";
        answer.body = *bytes;
        return answer;
    }
    const std::string* contentType = request.header("Content-Type");
    if (!contentType || *contentType != "image/png")
        return errorAnswer(415, "UNSUPPORTED_MEDIA_TYPE", "An image comes as image/png.");
    if (const auto problem = checkPng(request.body); !problem.empty())
        return errorAnswer(400, "INVALID_IMAGE", problem);
    operations.envelopes.setImage(envelopeId, recipientId, type, request.body);
    return jsonAnswer(Json::Object());
}

} // namespace

void addRecipientOperations(Router& router, const Operations& operations) {
    const std::string envelope = "/v2/accounts/{accountId}/envelopes/{envelopeId}";
    const std::string recipients = envelope + "/recipients";
    const std::string tabs = recipients + "/{recipientId}/tabs";
    const auto add = [&](const char* method, const std::string& path, EnvelopeOperation operation) {
        router.add(method, path, onEnvelope(operations, std::move(operation)));
    };
    add("GET", recipients, [&](const std::string& id, const Request& request, const PathParameters&) {
        return listRecipients(operations, id, request);
    });
    add("POST", recipients, [&](const std::string& id, const Request& request, const PathParameters&) {
        return addRecipients(operations, id, request);
    });
    add("DELETE", recipients, [&](const std::string& id, const Request& request, const PathParameters&) {
        return deleteRecipients(operations, id, request);
    });
    add("POST", tabs, [&](const std::string& id, const Request& request, const PathParameters& parameters) {
        return addTabs(operations, id, request, parameters.find("recipientId")->second);
    });
    add("GET", tabs, [&](const std::string& id, const Request&, const PathParameters& parameters) {
        return tabsOf(operations, id, parameters.find("recipientId")->second);
    });
    add("POST", envelope + "/views/recipient",
        [&](const std::string& id, const Request& request, const PathParameters&) {
            return recipientView(operations, id, request);
        });
    for (const char* method : {"GET", "PUT"})
        add(method, recipients + "/{recipientId}/{imageType}",
            [&](const std::string& id, const Request& request, const PathParameters& parameters) {
                return image(operations, id, request, parameters);
            });
}

} // namespace norvane::sandbox
