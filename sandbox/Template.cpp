#include "sandbox/Template.h"

#include "sandbox/PdfCanvas.h"
#include "sandbox/PdfPages.h"
#include "sandbox/TemplatePlans.h"
#include "sandbox/Text.h"

#include <algorithm>

namespace norvane::sandbox {

namespace {

constexpr const char* kCreated = "2025-01-15T09:00:00.000Z";
constexpr const char* kModified = "2025-03-04T14:30:00.000Z";

/// A UUID that follows from a text.
std::string uuidOf(const std::string& text) {
    std::string hex = sha256Hex(text).substr(0, 32);
    hex[12] = '4';
    hex[16] = 'a';
    for (const std::size_t dash : {8, 13, 18, 23})
        hex.insert(dash, "-");
    return hex;
}

/// Draws one document on the canvas; answers its pages and what it placed.
AgreementWriter drawn(const DocumentPlan& plan, const PdfCanvas& canvas, int totalPages) {
    auto heading = plan.heading;
    heading.totalPages = totalPages;
    AgreementWriter writer(canvas, heading);
    plan.draw(writer);
    writer.finish();
    return writer;
}

Json recipientJson(const TemplateRole& role, const std::string& templateId, Json tabs, int tabCount) {
    Json json = Json::object({{"recipientId", role.recipientId}, {"roleName", role.roleName}});
    json.set("recipientIdGuid", uuidOf(templateId + "/" + role.recipientId));
    json.set("routingOrder", std::to_string(role.routingOrder)).set("status", "created");
    json.set("deliveryMethod", "email").set("canSignOffline", "true");
    for (const char* key : {"defaultRecipient", "signInEachLocation", "requireSignOnPaper", "requireIdLookup",
                            "templateLocked", "templateRequired", "inheritEmailNotificationConfiguration"})
        json.set(key, "false");
    if (role.inPerson) json.set("inPersonSigningType", "inPersonSigner");
    json.set("totalTabCount", std::to_string(tabCount)).set("tabs", std::move(tabs));
    return json;
}

Json recipientsJson(const TemplatePlan& plan, const std::vector<std::vector<Tab>>& tabsOfDocuments) {
    Json recipients;
    for (const char* list : {"signers", "agents", "editors", "intermediaries", "carbonCopies",
                             "certifiedDeliveries", "inPersonSigners"})
        recipients.set(list, Json::Array());
    for (const TemplateRole& role : plan.roles) {
        Json tabs;
        int order = 0;
        for (std::size_t document = 0; document < tabsOfDocuments.size(); ++document)
            for (const Tab& tab : tabsOfDocuments[document]) {
                if (tab.recipientId != role.recipientId) continue;
                const std::string key =
                    plan.templateId + "/" + role.recipientId + "/" + tab.group + "/" + tab.label;
                addTab(tabs, tab, std::to_string(document + 1), uuidOf(key), ++order);
            }
        const char* list = role.inPerson ? "inPersonSigners" : "signers";
        recipients.find(list)->push(recipientJson(role, plan.templateId, std::move(tabs), order));
    }
    recipients.set("recipientCount", std::to_string(plan.roles.size())).set("currentRoutingOrder", "1");
    return recipients;
}

Json definitionJson(const Template& source, const Json& owner) {
    const TemplatePlan& plan = source.plan;
    Json json = Json::object({{"templateId", plan.templateId}, {"name", plan.name}});
    json.set("description", plan.description).set("shared", "false").set("lastModified", source.modified);
    json.set("lastModifiedBy", owner).set("pageCount", source.pageCount);
    json.set("uri", "/templates/" + plan.templateId).set("folderName", plan.folderName);
    json.set("folderId", folderIdOf(plan.folderName))
        .set("folderUri", "/folders/" + folderIdOf(plan.folderName));
    return json.set("owner", owner);
}

/// The members that a template shares with an envelope.
void addEnvelopeMembers(Json& json, const Template& source) {
    const TemplatePlan& plan = source.plan;
    const std::string uri = "/templates/" + plan.templateId;
    json.set("status", "created").set("emailSubject", plan.emailSubject).set("emailBlurb", plan.emailBlurb);
    json.set("signingLocation", "online")
        .set("createdDateTime", source.created)
        .set("lastModifiedDateTime", source.modified);
    json.set("documentsUri", uri + "/documents").set("documentsCombinedUri", uri + "/documents/combined");
    json.set("recipientsUri", uri + "/recipients").set("customFieldsUri", uri + "/custom_fields");
    json.set("notificationUri", uri + "/notification");
    for (const char* key : {"allowReassign", "enableWetSign", "autoNavigation", "envelopeIdStamping"})
        json.set(key, "true");
    for (const char* key : {"asynchronous", "authoritativeCopy", "allowMarkup", "enforceSignerVisibility",
                            "messageLock", "recipientsLock", "brandLock", "is21CFRPart11"})
        json.set(key, "false");
    json.set("notification",
             Json::object(
                 {{"useAccountDefaults", "false"},
                  {"reminders",
                   Json::object(
                       {{"reminderEnabled", "false"}, {"reminderDelay", "0"}, {"reminderFrequency", "0"}})},
                  {"expirations",
                   Json::object({{"expireEnabled", "true"}, {"expireAfter", "120"}, {"expireWarn", "0"}})}}));
}

} // namespace

Template makeTemplate(TemplatePlan plan) {
    Template made;
    std::vector<std::vector<Tab>> tabs;
    PdfCanvas combined(plan.name);
    for (const DocumentPlan& document : plan.documents) {
        PdfCanvas draft(document.name);
        const int pages = drawn(document, draft, 0).page();
        PdfCanvas canvas(document.heading.title);
        tabs.push_back(drawn(document, canvas, pages).tabs());
        drawn(document, combined, pages);
        made.documents.push_back({std::to_string(made.documents.size() + 1), document.name, canvas.finish()});
        made.pages.push_back(pages);
        made.pageCount += pages;
    }
    made.combinedPdf = plan.documents.size() == 1 ? made.documents.front().pdf : combined.finish();
    made.recipients = recipientsJson(plan, tabs);
    made.plan = std::move(plan);
    made.created = kCreated;
    made.modified = kModified;
    return made;
}

const std::vector<Template>& templateCatalogue() {
    static const std::vector<Template> catalogue = [] {
        std::vector<Template> made;
        for (auto* plan : {leasePlan, consentPlan, supplyPlan, rentalPlan})
            made.push_back(makeTemplate(plan()));
        return made;
    }();
    return catalogue;
}

void countPages(Template& source) {
    source.pages.clear();
    source.pageCount = 0;
    std::vector<std::string> parts;
    for (const Document& document : source.documents) {
        parts.push_back(document.pdf);
        source.pages.push_back(static_cast<int>(pageSizes(document.pdf).size()));
        source.pageCount += source.pages.back();
    }
    source.combinedPdf = parts.size() > 1 ? joinedPdf(parts) : parts.empty() ? "" : parts.front();
}

std::string folderIdOf(const std::string& folderName) { return uuidOf("folder/" + folderName); }

Json documentsJson(const Template& source) {
    Json::Array documents;
    for (std::size_t at = 0; at < source.documents.size(); ++at) {
        const Document& document = source.documents[at];
        Json json = Json::object({{"documentId", document.id}, {"name", document.name}});
        json.set("uri", "/templates/" + source.plan.templateId + "/documents/" + document.id);
        json.set("order", std::to_string(at + 1)).set("pages", std::to_string(source.pages[at]));
        json.set("fileExtension", "pdf").set("transformPdfFields", "false");
        json.set("includeInDownload", "true").set("signerMustAcknowledge", "no_interaction");
        documents.push_back(std::move(json));
    }
    return documents;
}

Json templateJson(const Template& source, const Json& owner) {
    Json json = Json::object({{"envelopeTemplateDefinition", definitionJson(source, owner)}});
    json.set("documents", documentsJson(source)).set("recipients", source.recipients);
    json.set("customFields",
             Json::object({{"textCustomFields", Json::Array()}, {"listCustomFields", Json::Array()}}));
    addEnvelopeMembers(json, source);
    return json;
}

Json templateResultJson(const Template& source, const Json& owner) {
    Json json = definitionJson(source, owner);
    json.erase("lastModifiedBy");
    addEnvelopeMembers(json, source);
    return json;
}

} // namespace norvane::sandbox
