#include "sandbox/Documents.h"
#include "sandbox/Template.h"
#include "sandbox/TemplateStore.h"
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
    for (const auto& pointer : call.operations.templates.all()) {
        const Template& source = *pointer;
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

constexpr const char* kFolder = "My Templates"; ///< where a template lies that names no folder

/// Sets what the body has of the members that a template keeps itself.
void setMembers(const Json& body, TemplatePlan& plan) {
    const auto take = [](const Json& from, const char* key, std::string& to) {
        if (from.find(key)) to = from.text(key);
    };
    if (const Json* definition = body.find("envelopeTemplateDefinition")) {
        take(*definition, "name", plan.name);
        take(*definition, "description", plan.description);
        take(*definition, "folderName", plan.folderName);
    }
    take(body, "emailSubject", plan.emailSubject);
    take(body, "emailBlurb", plan.emailBlurb);
}

/// Reads the body's recipients, with a list for each kind and an id for each tab. Answers what is wrong with
/// them, or nothing.
std::string readRecipients(const Json& body, Json& recipients) {
    const Json* given = body.find("recipients");
    recipients = given ? *given : Json(Json::Object());
    if (!recipients.isObject()) return "recipients is not an object";
    for (const char* list : {"signers", "agents", "editors", "intermediaries", "carbonCopies",
                             "certifiedDeliveries", "inPersonSigners"}) {
        if (!recipients.find(list)) recipients.set(list, Json::Array());
        if (!recipients.find(list)->isArray()) return std::string(list) + " is not a list";
        for (const Json& recipient : recipients.array(list))
            if (recipient.text("recipientId").empty())
                return std::string("a recipient has no recipientId in ") + list;
    }
    eraseTabs(recipients, [](const std::string&, Json& tab) {
        if (tab.text("tabId").empty()) tab.set("tabId", newUuid());
        return false;
    });
    recountRecipients(recipients);
    return {};
}

/// Keeps the members of the body that lie beside a template.
void keepDetails(const Operations& operations, const std::filesystem::path& file, const Json& body) {
    for (const char* member : {"customFields", "notification"})
        if (const Json* given = body.find(member))
            operations.details.change(file, member, {}, [&](Json& kept) {
                kept = *given;
                return Answer();
            });
}

Answer summaryOf(const TemplatePlan& plan, int status) {
    return jsonAnswer(
        Json::object(
            {{"templateId", plan.templateId}, {"name", plan.name}, {"uri", "/templates/" + plan.templateId}}),
        status);
}

Answer createTemplate(const Call& call) {
    Json body;
    if (auto refusal = readBody(call.request, body)) return *refusal;
    Template made;
    made.plan.templateId = newUuid();
    made.plan.folderName = kFolder;
    setMembers(body, made.plan);
    if (made.plan.name.empty()) return malformed("envelopeTemplateDefinition.name is missing.");
    if (const auto problem = putDocuments(body, made.documents); !problem.empty()) return malformed(problem);
    if (const auto problem = readRecipients(body, made.recipients); !problem.empty())
        return malformed(problem);
    made.created = made.modified = nowText();
    const TemplatePlan plan = made.plan;
    call.operations.templates.add(std::move(made));
    keepDetails(call.operations, templateDetailFile(call.operations, plan.templateId), body);
    return summaryOf(plan, 201);
}

/// Sets what the body names; documents are added, or replaced by those of their ids.
Answer updateTemplate(const Call& call) {
    Json body;
    if (auto refusal = readBody(call.request, body)) return *refusal;
    Json given;
    if (const auto problem = readRecipients(body, given); !problem.empty()) return malformed(problem);
    Answer answer = call.operations.templates.change(call.source->plan.templateId, [&](Template& source) {
        setMembers(body, source.plan);
        if (source.plan.name.empty()) return malformed("A template keeps a name.");
        if (const auto problem = putDocuments(body, source.documents); !problem.empty())
            return malformed(problem);
        return summaryOf(source.plan, 200);
    });
    if (answer.status >= 400) return answer;
    keepDetails(call.operations, call.detailFile(), body);
    if (body.find("recipients"))
        changeRecipients(call, [&](Json& recipients) {
            recipients = given;
            return Answer();
        });
    return answer;
}

constexpr Route kTemplateRoutes[] = {
    {"GET", "/templates", listTemplates},
    {"POST", "/templates", createTemplate},
    {"PUT", "/templates/{templateId}", updateTemplate},
    {"GET", "/templates/{templateId}", oneTemplate},
};

} // namespace

void addTemplateOperations(Router& router, const Operations& operations) {
    addRoutes(router, operations, kTemplateRoutes);
}

} // namespace norvane::sandbox
