#include "sandbox/Documents.h"

#include "sandbox/DocumentCheck.h"
#include "sandbox/PrivateFile.h"
#include "sandbox/Template.h"
#include "sandbox/TemplateStore.h"
#include "sandbox/Text.h"

#include <algorithm>

namespace norvane::sandbox {

std::vector<Document> documentsOf(const Call& call) {
    if (call.source) return call.source->documents;
    std::vector<Document> documents;
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

std::string putDocuments(const Json& body, std::vector<Document>& documents) {
    for (const Json& given : body.array("documents")) {
        const std::string& id = given.text("documentId");
        if (id.empty()) return "a document has no documentId";
        auto bytes = base64Decoded(given.text("documentBase64"));
        if (!bytes || bytes->empty()) return "document " + id + " has no documentBase64";
        if (const auto found = checkPdf(*bytes); !found.ok()) return "document " + id + ": " + found.error;
        Document document{id, given.text("name"), std::move(*bytes)};
        const auto old = std::find_if(documents.begin(), documents.end(),
                                      [&](const Document& known) { return known.id == id; });
        if (old == documents.end())
            documents.push_back(std::move(document));
        else
            *old = std::move(document);
    }
    return {};
}

Answer changeDocuments(const Call& call, const std::function<Answer(std::vector<Document>&)>& change) {
    if (call.source)
        return call.operations.templates.change(call.source->plan.templateId,
                                                [&](Template& source) { return change(source.documents); });
    if (call.envelope->status != "created") return notADraft();
    return call.operations.envelopes.changeDocuments(call.envelope->envelopeId, change);
}

void eraseTabs(Json& recipients,
               const std::function<bool(const std::string& documentId, Json& tab)>& isGone) {
    const auto eraseOf = [&](Json& list) {
        std::erase_if(*list.mutableItems(), [&](Json& tab) {
            const std::string documentId = tab.text("documentId");
            Json* radios = tab.find("radios");
            if (!radios || !radios->mutableItems()) return isGone(documentId, tab);
            std::erase_if(*radios->mutableItems(), [&](Json& radio) { return isGone(documentId, radio); });
            return radios->items().empty();
        });
    };
    for (const auto& [list, entries] : Json(recipients).members())
        if (Json::Array* items = recipients.find(list)->mutableItems())
            for (Json& recipient : *items)
                if (Json* tabs = recipient.find("tabs"))
                    for (const auto& [kind, ignored] : Json(*tabs).members())
                        if (tabs->find(kind)->isArray()) eraseOf(*tabs->find(kind));
}

Answer notADraft() {
    return errorAnswer(403, "ENVELOPE_IS_NOT_A_DRAFT", "Only a draft can be changed like this.");
}

} // namespace norvane::sandbox
