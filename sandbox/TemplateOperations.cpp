#include "sandbox/Operations.h"
#include "sandbox/Template.h"
#include "sandbox/Text.h"

#include <algorithm>

namespace norvane::sandbox {

namespace {

bool isWanted(const Template& source, const Request& request) {
    const std::string search = lowered(request.queryValue("search_text"));
    if (lowered(source.plan.name).find(search) == std::string::npos) return false;
    const std::string folder = request.queryValue("folder");
    if (!folder.empty() && !equalsIgnoringCase(folder, source.plan.folderName) &&
        !equalsIgnoringCase(folder, folderIdOf(source.plan.folderName)))
        return false;
    const std::string ids = request.queryValue("folder_ids");
    const auto wanted = split(ids, ',');
    return ids.empty() ||
           std::find(wanted.begin(), wanted.end(), folderIdOf(source.plan.folderName)) != wanted.end();
}

Answer listTemplates(const Operations& operations, const Request& request) {
    const Paging paging = pagingOf(request);
    if (!paging.error.empty()) return errorAnswer(400, "INVALID_REQUEST_PARAMETER", paging.error);
    const auto include = split(request.queryValue("include"), ',');
    const auto includes = [&](const char* what) {
        return std::find(include.begin(), include.end(), what) != include.end();
    };
    Json::Array shown;
    std::size_t total = 0;
    for (const Template& source : templateCatalogue()) {
        if (!isWanted(source, request)) continue;
        const std::size_t position = total++;
        if (position < paging.start || position - paging.start >= paging.count) continue;
        Json entry = templateResultJson(source, ownerJson(operations.credentials));
        if (includes("documents")) entry.set("documents", documentsJson(source));
        if (includes("recipients")) entry.set("recipients", source.recipients);
        shown.push_back(std::move(entry));
    }
    Json json = Json::object({{"envelopeTemplates", std::move(shown)}});
    addPaging(json, paging, total, "/templates");
    return jsonAnswer(json);
}

Answer pdfAnswer(const std::string& name, const std::string& bytes) {
    Answer answer;
    answer.contentType = "application/pdf";
    answer.body = bytes;
    answer.headers = {{"Content-Disposition", "attachment; filename=\"" + name + "\""}};
    return answer;
}

Answer templateDocument(const Template& source, const std::string& documentId) {
    if (documentId == "combined") return pdfAnswer(source.plan.name + ".pdf", source.combinedPdf);
    for (const TemplateDocument& document : source.documents)
        if (document.documentId == documentId) return pdfAnswer(document.name, document.pdf);
    return errorAnswer(404, "DOCUMENT_DOES_NOT_EXIST", "The template has no document of this id.");
}

/// The operation on the template that the path names.
Router::Operation onTemplate(std::function<Answer(const Template&, const PathParameters&)> operation) {
    return [operation = std::move(operation)](const Request&, const PathParameters& parameters) {
        const std::string& id = parameters.find("templateId")->second;
        if (!isUuid(id))
            return errorAnswer(400, "INVALID_REQUEST_PARAMETER", "The template id is not a UUID.");
        const Template* source = findTemplate(id);
        if (!source) return errorAnswer(404, "TEMPLATE_NOT_FOUND", "The account has no template of this id.");
        return operation(*source, parameters);
    };
}

} // namespace

void addTemplateOperations(Router& router, const Operations& operations) {
    const std::string templates = "/v2/accounts/{accountId}/templates";
    const std::string one = templates + "/{templateId}";
    router.add("GET", templates, [&](const Request& request, const PathParameters&) {
        return listTemplates(operations, request);
    });
    router.add("GET", one, onTemplate([&](const Template& source, const PathParameters&) {
                   return jsonAnswer(templateJson(source, ownerJson(operations.credentials)));
               }));
    router.add("GET", one + "/recipients", onTemplate([](const Template& source, const PathParameters&) {
                   return jsonAnswer(source.recipients);
               }));
    router.add("GET", one + "/documents", onTemplate([](const Template& source, const PathParameters&) {
                   return jsonAnswer(Json::object({{"templateId", source.plan.templateId},
                                                   {"templateDocuments", documentsJson(source)}}));
               }));
    router.add("GET", one + "/documents/{documentId}",
               onTemplate([](const Template& source, const PathParameters& parameters) {
                   return templateDocument(source, parameters.find("documentId")->second);
               }));
}

} // namespace norvane::sandbox
