#include "sandbox/Documents.h"
#include "sandbox/EnvelopeCheck.h"
#include "sandbox/Template.h"
#include "sandbox/TemplateStore.h"
#include "sandbox/Text.h"

#include <algorithm>
#include <map>

namespace norvane::sandbox {

namespace {

constexpr const char* kApplied = "appliedTemplates";

using Ids = std::map<std::string, std::string>; ///< of documents: in the template, in the envelope

/// One more than the largest number among the ids.
std::string nextId(const std::vector<std::string>& ids) {
    unsigned long long largest = 0;
    for (const std::string& id : ids)
        largest = std::max(largest, wholeNumber(id).value_or(0));
    return std::to_string(largest + 1);
}

Ids addDocuments(const Template& source, std::vector<Document>& documents) {
    Ids added;
    for (Document document : source.documents) {
        std::vector<std::string> taken;
        taken.reserve(documents.size());
        for (const Document& known : documents)
            taken.push_back(known.id);
        const std::string id = nextId(taken);
        added.emplace(std::exchange(document.id, id), id);
        documents.push_back(std::move(document));
    }
    return added;
}

Json* recipientOfRole(Json& recipients, const std::string& roleName) {
    for (const auto& [list, entries] : Json(recipients).members())
        if (Json::Array* items = recipients.find(list)->mutableItems())
            for (Json& recipient : *items)
                if (!roleName.empty() && recipient.text("roleName") == roleName) return &recipient;
    return nullptr;
}

/// Gives a recipient copies of the tabs, on the documents as the envelope has them.
void addTabs(const Json& tabs, const Ids& documents, Json& recipient) {
    if (!recipient.find("tabs")) recipient.set("tabs", Json::Object());
    Json& own = *recipient.find("tabs");
    for (const auto& [kind, entries] : tabs.members())
        for (Json tab : entries.items()) {
            const auto document = documents.find(tab.text("documentId"));
            if (document != documents.end()) tab.set("documentId", document->second);
            tab.set("recipientId", recipient.text("recipientId"));
            if (!tab.text("tabId").empty()) tab.set("tabId", newUuid());
            if (Json* radios = tab.find("radios"); radios && radios->mutableItems())
                for (Json& radio : *radios->mutableItems())
                    radio.set("tabId", newUuid());
            if (!own.find(kind)) own.set(kind, Json::Array());
            own.find(kind)->push(std::move(tab));
        }
}

/// Adds the template's recipients; who has a role of the envelope gives that role its tabs.
void addRecipients(const Json& given, const Ids& documents, Json& recipients) {
    for (const auto& [list, entries] : given.members())
        for (const Json& added : entries.items()) {
            const Json* tabs = added.find("tabs");
            Json* known = recipientOfRole(recipients, added.text("roleName"));
            if (!known) {
                std::vector<std::string> taken;
                for (const auto& [other, others] : recipients.members())
                    for (const Json& recipient : others.items())
                        taken.push_back(recipient.text("recipientId"));
                Json recipient = added;
                recipient.set("recipientId", nextId(taken)).erase("tabs");
                if (!recipients.find(list)) recipients.set(list, Json::Array());
                recipients.find(list)->push(std::move(recipient));
                known = &recipients.find(list)->mutableItems()->back();
            }
            if (tabs) addTabs(*tabs, documents, *known);
        }
}

/// The templates of the envelope, or of one of its documents.
Answer appliedTemplates(const Call& call) {
    const auto document = call.parameters.find("documentId");
    if (document != call.parameters.end() && !documentOf(call)) return unknownDocument();
    Json::Array shown;
    const Json details = call.operations.details.read(call.detailFile());
    for (Json entry : details.array(kApplied)) {
        const Json::Array ids = entry.array("documentIds");
        const bool isOf = document == call.parameters.end() ||
                          std::any_of(ids.begin(), ids.end(),
                                      [&](const Json& id) { return id.asText() == document->second; });
        entry.erase("documentIds");
        if (isOf) shown.push_back(std::move(entry));
    }
    return jsonAnswer(Json::object({{"templates", std::move(shown)}}));
}

/// Adds the documents, recipients and tabs of templates to a draft: {"documentTemplates": [{"templateId"}]}.
Answer applyTemplates(const Call& call) {
    Json body;
    if (auto refusal = readBody(call.request, body)) return *refusal;
    std::vector<TemplateStore::Pointer> sources;
    for (const Json& entry : body.array("documentTemplates")) {
        sources.push_back(call.operations.templates.find(entry.text("templateId")));
        if (!sources.back())
            return errorAnswer(404, "TEMPLATE_NOT_FOUND", "The account has no template of this id.");
    }
    if (sources.empty()) return malformed("documentTemplates is missing or empty.");
    std::vector<Ids> added;
    Answer changed = changeDocuments(call, [&](std::vector<Document>& documents) {
        for (const auto& source : sources)
            added.push_back(addDocuments(*source, documents));
        return Answer();
    });
    if (changed.status >= 400) return changed;
    Json::Array shown;
    for (std::size_t at = 0; at < sources.size(); ++at) {
        const Json given = recipientsOf({call.operations, call.request, call.parameters, {}, sources[at]});
        changeRecipients(call, [&](Json& recipients) {
            addRecipients(given, added[at], recipients);
            recountRecipients(recipients);
            return Answer();
        });
        std::vector<std::string> ids;
        for (const auto& [before, id] : added[at])
            ids.push_back(id);
        noteTemplate(call.operations, call.envelope->folder, *sources[at], ids);
        for (const std::string& id : ids)
            shown.push_back(Json::object({{"templateId", sources[at]->plan.templateId}, {"documentId", id}}));
    }
    return jsonAnswer(Json::object({{"documentTemplates", std::move(shown)}}), 201);
}

constexpr Route kAppliedRoutes[] = {
    {"GET", "/envelopes/{envelopeId}/templates", appliedTemplates},
    {"POST", "/envelopes/{envelopeId}/templates", applyTemplates},
    {"GET", "/envelopes/{envelopeId}/documents/{documentId}/templates", appliedTemplates},
};

} // namespace

void noteTemplate(const Operations& operations, const std::filesystem::path& envelopeFolder,
                  const Template& source, const std::vector<std::string>& documentIds) {
    Json entry = Json::object({{"templateId", source.plan.templateId},
                               {"name", source.plan.name},
                               {"uri", "/templates/" + source.plan.templateId}});
    entry.set("documentIds", Json::Array(documentIds.begin(), documentIds.end()));
    operations.details.change(envelopeFolder / "details.json", kApplied, Json::Array(), [&](Json& kept) {
        kept.push(entry);
        return Answer();
    });
}

void addAppliedTemplates(Router& router, const Operations& operations) {
    addRoutes(router, operations, kAppliedRoutes);
}

} // namespace norvane::sandbox
