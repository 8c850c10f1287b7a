#include "sandbox/DocumentCheck.h"
#include "sandbox/EnvelopeCheck.h"
#include "sandbox/Operations.h"
#include "sandbox/Template.h"
#include "sandbox/Text.h"
#include "sandbox/Upload.h"

#include <deque>

namespace norvane::sandbox {

namespace {

Answer summaryAnswer(const ReceivedEnvelope& envelope) {
    return jsonAnswer(Json::object({{"envelopeId", envelope.envelopeId},
                                    {"uri", "/envelopes/" + envelope.envelopeId},
                                    {"statusDateTime", envelope.statusDateTime},
                                    {"status", envelope.status}}),
                      201);
}

Answer createFromUpload(const Operations& operations, const Request& request) {
    Upload upload = readUpload(request);
    if (!upload.ok()) return errorAnswer(400, "INVALID_MULTI_PART_REQUEST", upload.error);
    if (const auto problem = checkOfflineEnvelope(upload); !problem.empty()) return malformed(problem);
    NewEnvelope envelope;
    envelope.request = &request;
    envelope.json = upload.parts.front().body;
    envelope.definition = upload.envelope;
    envelope.recipients = *upload.envelope.find("recipients");
    envelope.multipart = true;
    envelope.warnings = warningsOf(upload);
    envelope.parts = std::move(upload.parts);
    return summaryAnswer(operations.envelopes.add(envelope));
}

void fillRole(Json& recipient, const Json& role, bool inPerson) {
    const auto put = [&](const char* key, const char* from) {
        if (!role.text(from).empty()) recipient.set(key, role.text(from));
    };
    put(inPerson ? "hostName" : "name", "name");
    put(inPerson ? "hostEmail" : "email", "email");
    if (inPerson) put("signerName", "inPersonSignerName");
    put("clientUserId", "clientUserId");
    put("routingOrder", "routingOrder");
}

/// The template's recipients with the names that the roles give them; an unknown role is an error.
std::string applyRoles(const Json& roles, Json& recipients) {
    for (const Json& role : roles.items()) {
        bool known = false;
        for (const char* list : {"signers", "inPersonSigners"})
            for (Json& recipient : *recipients.find(list)->mutableItems()) {
                if (recipient.text("roleName") != role.text("roleName")) continue;
                fillRole(recipient, role, std::string_view(list) == "inPersonSigners");
                known = true;
            }
        if (!known) return "the template has no role " + role.text("roleName");
    }
    return {};
}

/// Documents out of a plain envelope: the bytes stay in `kept`.
std::string takeDocuments(const Json& definition, std::deque<std::string>& kept,
                          std::vector<UploadPart>& parts) {
    for (const Json& document : definition.array("documents")) {
        const std::string& id = document.text("documentId");
        auto bytes = base64Decoded(document.text("documentBase64"));
        if (!bytes || bytes->empty()) return "document " + id + " has no documentBase64";
        kept.push_back(std::move(*bytes));
        if (const auto found = checkPdf(kept.back()); !found.ok())
            return "document " + id + ": " + found.error;
        UploadPart& part = parts.emplace_back();
        part.kind = UploadPart::Kind::Document;
        part.documentId = id;
        part.fileName = document.text("name");
        part.body = kept.back();
    }
    return {};
}

std::string useTemplate(const Call& call, const Json& definition, NewEnvelope& envelope) {
    const Template& source = *call.source;
    envelope.recipients = recipientsOf(call);
    for (const TemplateDocument& document : source.documents) {
        UploadPart& part = envelope.parts.emplace_back();
        part.kind = UploadPart::Kind::Document;
        part.documentId = document.documentId;
        part.fileName = document.name;
        part.body = document.pdf;
    }
    const Json* roles = definition.find("templateRoles");
    return roles ? applyRoles(*roles, envelope.recipients) : std::string();
}

Answer createFromJson(const Operations& operations, const Request& request) {
    const JsonResult parsed = parseJson(request.body);
    if (!parsed.ok() || !parsed.value.isObject())
        return malformed("the body is not a JSON object: " + parsed.error);
    const Json& definition = parsed.value;
    if (const auto problem = checkScalars(definition); !problem.empty()) return malformed(problem);
    const std::string& status = definition.text("status");
    if (status != "created" && status != "sent") return malformed("status is neither created nor sent");
    NewEnvelope envelope;
    envelope.request = &request;
    envelope.json = request.body;
    envelope.definition = definition;
    std::deque<std::string> bytes;
    std::string problem;
    if (const std::string& id = definition.text("templateId"); !id.empty()) {
        const Template* source = findTemplate(id);
        if (!source)
            return errorAnswer(400, "TEMPLATE_ID_INVALID", "The account has no template of this id.");
        problem = useTemplate({operations, request, {}, {}, source}, definition, envelope);
    } else {
        problem = takeDocuments(definition, bytes, envelope.parts);
        if (const Json* recipients = definition.find("recipients")) envelope.recipients = *recipients;
        if (envelope.parts.empty() && problem.empty())
            problem = "the envelope has neither a template nor a document";
    }
    if (!problem.empty()) return malformed(problem);
    return summaryAnswer(operations.envelopes.add(envelope));
}

} // namespace

Answer createEnvelope(const Call& call) {
    const Operations& operations = call.operations;
    const Request& request = call.request;
    const std::string* type = request.header("Content-Type");
    const std::string media = type ? lowered(trimmed(type->substr(0, type->find(';')))) : "";
    if (media == "multipart/form-data") return createFromUpload(operations, request);
    if (media == "application/json") return createFromJson(operations, request);
    return errorAnswer(415, "UNSUPPORTED_MEDIA_TYPE", "Envelopes come as JSON or as multipart/form-data.");
}

} // namespace norvane::sandbox
