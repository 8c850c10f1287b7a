#include "sandbox/DocumentCheck.h"
#include "sandbox/EnvelopeCheck.h"
#include "sandbox/Operations.h"
#include "sandbox/Text.h"

#include <set>

namespace norvane::sandbox {

namespace {

Answer listRecipients(const Call& call) {
    Json recipients = recipientsOf(call);
    if (call.request.queryValue("include_tabs") == "true") return jsonAnswer(recipients);
    for (const auto& [list, entries] : Json(recipients).members())
        if (Json::Array* items = recipients.find(list)->mutableItems())
            for (Json& recipient : *items)
                recipient.erase("tabs");
    return jsonAnswer(recipients);
}

/// A template's come with their tabs.
Answer listAllRecipients(const Call& call) { return jsonAnswer(recipientsOf(call)); }

Answer addRecipients(const Call& call) {
    Json body;
    if (auto refusal = readBody(call.request, body)) return *refusal;
    return changeRecipients(call, [&](Json& recipients) {
        for (const auto& [list, entries] : body.members())
            for (const Json& added : entries.items()) {
                const std::string& id = added.text("recipientId");
                if (id.empty() || findRecipient(recipients, id))
                    return errorAnswer(400, "INVALID_RECIPIENT_ID",
                                       "A recipientId is missing or taken: " + id);
                if (!recipients.find(list)) recipients.set(list, Json::Array());
                recipients.find(list)->push(added);
            }
        recountRecipients(recipients);
        return jsonAnswer(body, 201);
    });
}

/// Sets members of recipients that are there.
Answer updateRecipients(const Call& call) {
    Json body;
    if (auto refusal = readBody(call.request, body)) return *refusal;
    return changeRecipients(call, [&](Json& recipients) {
        for (const auto& [list, entries] : body.members())
            for (const Json& given : entries.items()) {
                Json* recipient = findRecipient(recipients, given.text("recipientId"));
                if (!recipient) return unknownRecipient();
                for (const auto& [key, value] : given.members())
                    recipient->set(key, value);
            }
        return jsonAnswer(body);
    });
}

Answer deleteRecipients(const Call& call) {
    Json body;
    if (auto refusal = readBody(call.request, body)) return *refusal;
    return changeRecipients(call, [&](Json& recipients) {
        for (const auto& [list, entries] : body.members())
            for (const Json& unwanted : entries.items()) {
                const std::string& id = unwanted.text("recipientId");
                Json* kept = recipients.find(list);
                Json::Array* items = kept ? kept->mutableItems() : nullptr;
                const auto same = [&](const Json& recipient) { return recipient.text("recipientId") == id; };
                if (!items || std::erase_if(*items, same) == 0) return unknownRecipient();
            }
        recountRecipients(recipients);
        return jsonAnswer(body);
    });
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
Answer recipientView(const Call& call) {
    Json view;
    if (auto refusal = readBody(call.request, view)) return *refusal;
    for (const char* key : {"returnUrl", "authenticationMethod"})
        if (view.text(key).empty())
            return errorAnswer(400, "INVALID_REQUEST_PARAMETER", std::string(key) + " is missing.");
    bool known = false;
    forEachSigner(recipientsOf(call), [&](const Json& signer) { known = known || isMeant(signer, view); });
    if (!known) return errorAnswer(400, "UNKNOWN_ENVELOPE_RECIPIENT", "The envelope has no such recipient.");
    return jsonAnswer(Json::object({{"url", call.operations.url + "/Member/Norvane.aspx?t=" + newUuid()}}),
                      201);
}

/// The other views of the service's pages, for whoever sends.
Answer senderView(const Call& call) {
    Json view;
    if (auto refusal = readBody(call.request, view)) return *refusal;
    return jsonAnswer(Json::object({{"url", call.operations.url + "/Member/Sender.aspx?t=" + newUuid()}}),
                      201);
}

Answer deleteRecipient(const Call& call) {
    return changeRecipients(call, [&](Json& recipients) {
        const Json* found = findRecipient(recipients, call["recipientId"]);
        if (!found) return unknownRecipient();
        const Json deleted = *found;
        for (const auto& [list, entries] : Json(recipients).members())
            if (Json::Array* items = recipients.find(list)->mutableItems())
                std::erase_if(*items, [&](const Json& recipient) {
                    return recipient.text("recipientId") == call["recipientId"];
                });
        recountRecipients(recipients);
        return jsonAnswer(deleted);
    });
}

bool isImageType(const std::string& type) {
    static const std::set<std::string> types{"signature", "signature_image", "initials", "initials_image"};
    return types.contains(type);
}

/// Whether the path names an image of a recipient of the envelope; the answer that refuses any other.
std::optional<Answer> refusalOfImage(const Call& call) {
    Json recipients = recipientsOf(call);
    if (!findRecipient(recipients, call["recipientId"])) return unknownRecipient();
    if (isImageType(call["imageType"])) return std::nullopt;
    return errorAnswer(404, "RESOURCE_NOT_FOUND", "There is no such image.");
}

Answer getImage(const Call& call) {
    if (auto refusal = refusalOfImage(call)) return *refusal;
    const auto bytes =
        call.operations.envelopes.image(call.envelope->envelopeId, call["recipientId"], call["imageType"]);
    if (!bytes) return errorAnswer(404, "IMAGE_NOT_FOUND", "The recipient has no such image.");
    Answer answer;
    answer.contentType = "image/png";
    answer.body = *bytes;
    return answer;
}

Answer setImage(const Call& call) {
    if (auto refusal = refusalOfImage(call)) return *refusal;
    const std::string* contentType = call.request.header("Content-Type");
    if (!contentType || *contentType != "image/png")
        return errorAnswer(415, "UNSUPPORTED_MEDIA_TYPE", "An image comes as image/png.");
    if (const auto problem = checkPng(call.request.body); !problem.empty())
        return errorAnswer(400, "INVALID_IMAGE", problem);
    call.operations.envelopes.setImage(call.envelope->envelopeId, call["recipientId"], call["imageType"],
                                       call.request.body);
    return jsonAnswer(Json::Object());
}

constexpr Route kRecipientRoutes[] = {
    {"GET", "/envelopes/{envelopeId}/recipients", listRecipients},
    {"POST", "/envelopes/{envelopeId}/recipients", addRecipients},
    {"PUT", "/envelopes/{envelopeId}/recipients", updateRecipients},
    {"DELETE", "/envelopes/{envelopeId}/recipients", deleteRecipients},
    {"DELETE", "/envelopes/{envelopeId}/recipients/{recipientId}", deleteRecipient},
    {"GET", "/envelopes/{envelopeId}/recipients/{recipientId}/{imageType}", getImage},
    {"PUT", "/envelopes/{envelopeId}/recipients/{recipientId}/{imageType}", setImage},
    {"POST", "/envelopes/{envelopeId}/views/recipient", recipientView},
    {"POST", "/envelopes/{envelopeId}/views/sender", senderView},
    {"POST", "/envelopes/{envelopeId}/views/edit", senderView},
    {"POST", "/envelopes/{envelopeId}/views/correct", senderView},
    {"POST", "/views/console", senderView},
    {"GET", "/templates/{templateId}/recipients", listAllRecipients},
    {"POST", "/templates/{templateId}/recipients", addRecipients},
    {"PUT", "/templates/{templateId}/recipients", updateRecipients},
    {"DELETE", "/templates/{templateId}/recipients", deleteRecipients},
    {"POST", "/templates/{templateId}/views/edit", senderView},
};

} // namespace

void addRecipientOperations(Router& router, const Operations& operations) {
    addRoutes(router, operations, kRecipientRoutes);
}

} // namespace norvane::sandbox
