#include "sandbox/Documents.h"
#include "sandbox/EnvelopeCheck.h"
#include "sandbox/Template.h"
#include "sandbox/TemplateStore.h"
#include "sandbox/Text.h"
#include "sandbox/Upload.h"

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

/// The documents as parts; they must outlive the envelope's making.
std::vector<UploadPart> partsOf(const std::vector<Document>& documents) {
    std::vector<UploadPart> parts;
    for (const Document& document : documents) {
        UploadPart& part = parts.emplace_back();
        part.kind = UploadPart::Kind::Document;
        part.documentId = document.id;
        part.fileName = document.name;
        part.body = document.pdf;
    }
    return parts;
}

Answer createFromTemplate(const Call& call, NewEnvelope envelope) {
    const Template& source = *call.source;
    envelope.recipients = recipientsOf(call);
    envelope.parts = partsOf(source.documents);
    if (const Json* roles = envelope.definition.find("templateRoles"))
        if (const auto problem = applyRoles(*roles, envelope.recipients); !problem.empty())
            return malformed(problem);
    const ReceivedEnvelope made = call.operations.envelopes.add(envelope);
    std::vector<std::string> ids;
    for (const Document& document : source.documents)
        ids.push_back(document.id);
    noteTemplate(call.operations, made.folder, source, ids);
    return summaryAnswer(made);
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
    if (const std::string& id = definition.text("templateId"); !id.empty()) {
        auto source = operations.templates.find(id);
        if (!source)
            return errorAnswer(400, "TEMPLATE_ID_INVALID", "The account has no template of this id.");
        return createFromTemplate({operations, request, {}, {}, std::move(source)}, std::move(envelope));
    }
    std::vector<Document> documents;
    if (const auto problem = putDocuments(definition, documents); !problem.empty()) return malformed(problem);
    if (documents.empty()) return malformed("the envelope has neither a template nor a document");
    envelope.parts = partsOf(documents);
    if (const Json* recipients = definition.find("recipients")) envelope.recipients = *recipients;
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
