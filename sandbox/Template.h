#pragma once

#include "sandbox/AgreementWriter.h"
#include "sandbox/Document.h"
#include "sandbox/Json.h"

#include <functional>
#include <string>
#include <vector>

namespace norvane::sandbox {

struct TemplateRole {
    std::string recipientId;
    std::string roleName;
    bool inPerson = true; ///< else a remote signer
    int routingOrder = 1;
};

struct DocumentPlan {
    std::string name; ///< with its extension
    AgreementWriter::Heading heading;
    std::function<void(AgreementWriter&)> draw; ///< draws the same thing each time it is called
};

/// What a template is made from.
struct TemplatePlan {
    std::string templateId;
    std::string name;
    std::string description;
    std::string folderName;
    std::string emailSubject;
    std::string emailBlurb;
    std::vector<TemplateRole> roles;
    std::vector<DocumentPlan> documents;
};

/// A template as it stands.
struct Template {
    TemplatePlan plan;
    std::vector<Document> documents;
    std::vector<int> pages; ///< of each document
    std::string combinedPdf;
    Json recipients;
    int pageCount = 0;
    std::string created; ///< moments, as they travel
    std::string modified;
};

/// Sets what follows from the documents: their pages and the one that joins them.
void countPages(Template& source);

/// Draws the documents and joins what the drawing placed into recipients with tabs.
Template makeTemplate(TemplatePlan plan);

/// The templates that every sandbox offers, drawn on first use and kept for the process. Any thread may call.
const std::vector<Template>& templateCatalogue();

/// The id of the folder of that name, the same on every run.
std::string folderIdOf(const std::string& folderName);

/// The whole template as it travels: its definition, documents and recipients.
Json templateJson(const Template& source, const Json& owner);
/// An entry of a list of templates, without documents and recipients.
Json templateResultJson(const Template& source, const Json& owner);
/// The "documents" of a template.
Json documentsJson(const Template& source);

} // namespace norvane::sandbox
