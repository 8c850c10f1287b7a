#include "sandbox/Operations.h"
#include "sandbox/PdfPages.h"
#include "sandbox/PrivateFile.h"
#include "sandbox/Template.h"

namespace norvane::sandbox {

namespace {

struct Document {
    std::string id;
    std::string name;
    std::string pdf;
};

/// Those of the envelope or of the template.
std::vector<Document> documentsOf(const Call& call) {
    std::vector<Document> documents;
    if (call.source)
        for (const TemplateDocument& document : call.source->documents)
            documents.push_back({document.documentId, document.name, document.pdf});
    else
        for (const ReceivedFile& document : call.envelope->documents)
            documents.push_back({document.id, document.name, readFile(document.path).value_or("")});
    return documents;
}

std::optional<Document> documentOf(const Call& call) {
    for (Document& document : documentsOf(call))
        if (document.id == call["documentId"]) return std::move(document);
    return std::nullopt;
}

Answer unknownDocument() {
    return errorAnswer(404, "DOCUMENT_DOES_NOT_EXIST", "There is no document of this id.");
}

Answer templateDocuments(const Call& call) {
    return jsonAnswer(Json::object(
        {{"templateId", call.source->plan.templateId}, {"templateDocuments", documentsJson(*call.source)}}));
}

Answer envelopeDocuments(const Call& call) {
    const std::string& envelopeId = call.envelope->envelopeId;
    Json::Array list;
    for (const Document& document : documentsOf(call))
        list.push_back(Json::object({{"documentId", document.id},
                                     {"name", document.name},
                                     {"type", "content"},
                                     {"uri", "/envelopes/" + envelopeId + "/documents/" + document.id},
                                     {"order", std::to_string(list.size() + 1)},
                                     {"pages", std::to_string(pageSizes(document.pdf).size())}}));
    return jsonAnswer(Json::object({{"envelopeId", envelopeId}, {"envelopeDocuments", std::move(list)}}));
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
    if (call.source) return pdfAnswer(call.source->plan.name + ".pdf", call.source->combinedPdf);
    std::vector<std::string> parts;
    for (Document& document : documentsOf(call))
        parts.push_back(std::move(document.pdf));
    if (parts.empty()) return unknownDocument();
    return pdfAnswer("combined.pdf", parts.size() == 1 ? parts.front() : joinedPdf(parts));
}

Answer document(const Call& call) {
    auto found = documentOf(call);
    return found ? pdfAnswer(found->name, std::move(found->pdf)) : unknownDocument();
}

Answer pages(const Call& call) {
    const auto found = documentOf(call);
    if (!found) return unknownDocument();
    Json::Array list;
    for (const PageSize& size : pageSizes(found->pdf)) {
        const std::string number = std::to_string(list.size() + 1);
        list.push_back(Json::object({{"pageId", number},
                                     {"sequence", number},
                                     {"width", std::to_string(size.width)},
                                     {"height", std::to_string(size.height)},
                                     {"dpi", "72"}}));
    }
    return pageAnswer(call.request, "pages", list, "/documents/" + found->id + "/pages");
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
    {"GET", "/envelopes/{envelopeId}/documents/combined", combined},
    {"GET", "/envelopes/{envelopeId}/documents/{documentId}", document},
    {"GET", "/envelopes/{envelopeId}/documents/{documentId}/pages", pages},
    {"GET", "/envelopes/{envelopeId}/documents/{documentId}/fields", fields},
    {"POST", "/envelopes/{envelopeId}/documents/{documentId}/fields", changeFields},
    {"PUT", "/envelopes/{envelopeId}/documents/{documentId}/fields", changeFields},
    {"DELETE", "/envelopes/{envelopeId}/documents/{documentId}/fields", changeFields},
    {"GET", "/templates/{templateId}/documents", templateDocuments},
    {"GET", "/templates/{templateId}/documents/combined", combined},
    {"GET", "/templates/{templateId}/documents/{documentId}", document},
    {"GET", "/templates/{templateId}/documents/{documentId}/pages", pages},
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
