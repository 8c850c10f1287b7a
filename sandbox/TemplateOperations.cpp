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

Answer listTemplates(const Call& call) {
    const Request& request = call.request;
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
        Json entry = templateResultJson(source, ownerJson(call.operations.credentials));
        if (includes("documents")) entry.set("documents", documentsJson(source));
        if (includes("recipients")) entry.set("recipients", source.recipients);
        shown.push_back(std::move(entry));
    }
    Json json = Json::object({{"envelopeTemplates", std::move(shown)}});
    addPaging(json, paging, total, "/templates");
    return jsonAnswer(json);
}

/// The template, with what was changed of it since.
Answer oneTemplate(const Call& call) {
    return jsonAnswer(call.operations.details.read(
        call.detailFile(), templateJson(*call.source, ownerJson(call.operations.credentials))));
}

constexpr Route kTemplateRoutes[] = {
    {"GET", "/templates", listTemplates},
    {"GET", "/templates/{templateId}", oneTemplate},
};

} // namespace

void addTemplateOperations(Router& router, const Operations& operations) {
    addRoutes(router, operations, kTemplateRoutes);
}

} // namespace norvane::sandbox
