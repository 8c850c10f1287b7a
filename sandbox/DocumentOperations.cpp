#include "sandbox/Documents.h"
#include "sandbox/PdfPages.h"
#include "sandbox/Template.h"

namespace norvane::sandbox {

namespace {

Answer templateDocuments(const Call& call) {
    return jsonAnswer(Json::object(
        {{"templateId", call.source->plan.templateId}, {"templateDocuments", documentsJson(*call.source)}}));
}

Json listed(const std::string& envelopeId, const std::vector<Document>& documents) {
    Json::Array list;
    for (const Document& document : documents)
        list.push_back(Json::object({{"documentId", document.id},
                                     {"name", document.name},
                                     {"type", "content"},
                                     {"uri", "/envelopes/" + envelopeId + "/documents/" + document.id},
                                     {"order", std::to_string(list.size() + 1)},
                                     {"pages", std::to_string(pageSizes(document.pdf).size())}}));
    return Json::object({{"envelopeId", envelopeId}, {"envelopeDocuments", std::move(list)}});
}

Answer envelopeDocuments(const Call& call) {
    return jsonAnswer(listed(call.envelope->envelopeId, documentsOf(call)));
}

/// Adds documents to a draft, or puts them in the place of those of their ids.
Answer updateDocuments(const Call& call) {
    Json body;
    if (auto refusal = readBody(call.request, body)) return *refusal;
    return changeDocuments(call, [&](std::vector<Document>& documents) {
        if (body.array("documents").empty()) return malformed("documents is missing or empty.");
        if (const auto problem = putDocuments(body, documents); !problem.empty()) return malformed(problem);
        return jsonAnswer(listed(call.envelope->envelopeId, documents));
    });
}

/// Takes documents out of a draft; their tabs go with them.
Answer deleteDocuments(const Call& call) {
    Json body;
    if (auto refusal = readBody(call.request, body)) return *refusal;
    Answer answer = changeDocuments(call, [&](std::vector<Document>& documents) {
        for (const Json& unwanted : body.array("documents")) {
            const std::string& id = unwanted.text("documentId");
            if (std::erase_if(documents, [&](const Document& known) { return known.id == id; }) == 0)
                return unknownDocument();
        }
        return jsonAnswer(listed(call.envelope->envelopeId, documents));
    });
    if (answer.status >= 400) return answer;
    changeRecipients(call, [&](Json& recipients) {
        for (const Json& gone : body.array("documents"))
            eraseTabs(recipients, [&](const std::string& documentId, Json&) {
                return documentId == gone.text("documentId");
            });
        return Answer();
    });
    return answer;
}

Answer pdfAnswer(const std::string& name, std::string bytes) {
    Answer answer;
    answer.contentType = "application/pdf";
    answer.body = std::move(bytes);
    answer.headers = {{"Content-Disposition", "attachment; filename=\"" + name + "\""}};
    return answer;
}

/// All documents as one.
Answer combined(const Call& call) {
    if (documentsOf(call).empty()) return unknownDocument();
    if (call.source) return pdfAnswer(call.source->plan.name + ".pdf", call.source->combinedPdf);
    std::vector<std::string> parts;
    for (Document& document : documentsOf(call))
        parts.push_back(std::move(document.pdf));
    return pdfAnswer("combined.pdf", parts.size() == 1 ? parts.front() : joinedPdf(parts));
}

Answer document(const Call& call) {
    auto found = documentOf(call);
    return found ? pdfAnswer(found->name, std::move(found->pdf)) : unknownDocument();
}

constexpr const char* kFields = "documentFields";

/// The name/value pairs of a document; they are kept by its id.
Answer fields(const Call& call) {
    if (!documentOf(call)) return unknownDocument();
    const Json details = call.operations.details.read(call.detailFile());
    const Json* kept = details.find(kFields);
    const Json::Array list = kept ? kept->array(call["documentId"]) : Json::Array();
    return jsonAnswer(Json::object({{kFields, list}}));
}

Answer changeFields(const Call& call) {
    if (!documentOf(call)) return unknownDocument();
    Json body;
    if (auto refusal = readBody(call.request, body)) return *refusal;
    const std::string& method = call.request.method;
    return call.operations.details.change(call.detailFile(), kFields, Json::Object(), [&](Json& kept) {
        Json::Array given = body.array(kFields);
        if (auto refusal = changeList(kept, call["documentId"], given, "name", method)) return *refusal;
        return jsonAnswer(Json::object({{kFields, given}}), method == "POST" ? 201 : 200);
    });
}

constexpr Route kDocumentRoutes[] = {
    {"GET", "/envelopes/{envelopeId}/documents", envelopeDocuments},
    {"PUT", "/envelopes/{envelopeId}/documents", updateDocuments},
    {"DELETE", "/envelopes/{envelopeId}/documents", deleteDocuments},
    {"GET", "/envelopes/{envelopeId}/documents/combined", combined},
    {"GET", "/envelopes/{envelopeId}/documents/{documentId}", document},
    {"GET", "/envelopes/{envelopeId}/documents/{documentId}/fields", fields},
    {"POST", "/envelopes/{envelopeId}/documents/{documentId}/fields", changeFields},
    {"PUT", "/envelopes/{envelopeId}/documents/{documentId}/fields", changeFields},
    {"DELETE", "/envelopes/{envelopeId}/documents/{documentId}/fields", changeFields},
    {"GET", "/templates/{templateId}/documents", templateDocuments},
    {"GET", "/templates/{templateId}/documents/combined", combined},
    {"GET", "/templates/{templateId}/documents/{documentId}", document},
    {"GET", "/templates/{templateId}/documents/{documentId}/fields", fields},
    {"POST", "/templates/{templateId}/documents/{documentId}/fields", changeFields},
    {"PUT", "/templates/{templateId}/documents/{documentId}/fields", changeFields},
    {"DELETE", "/templates/{templateId}/documents/{documentId}/fields", changeFields},
};

} // namespace

void addDocumentOperations(Router& router, const Operations& operations) {
    addRoutes(router, operations, kDocumentRoutes);
}

} // namespace norvane::sandbox
