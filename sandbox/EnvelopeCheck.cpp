#include "sandbox/EnvelopeCheck.h"

#include "sandbox/DocumentCheck.h"
#include "sandbox/Text.h"

#include <set>

namespace norvane::sandbox {

namespace {

using Kind = UploadPart::Kind;

bool isNumberKey(std::string_view key) {
    static const std::set<std::string_view> keys{"pageCount", "tabOrder", "width", "height", "maxLength"};
    return keys.contains(key);
}

std::string checkScalar(const Json& value, const std::string& key, const std::string& where) {
    if (value.isObject()) {
        for (const auto& [name, member] : value.members())
            if (auto problem = checkScalar(member, name, where.empty() ? name : where + "." + name);
                !problem.empty())
                return problem;
        return {};
    }
    if (value.isArray()) {
        int index = 0;
        for (const Json& item : value.items())
            if (auto problem = checkScalar(item, key, where + "[" + std::to_string(index++) + "]");
                !problem.empty())
                return problem;
        return {};
    }
    if (isNumberKey(key)) return value.isNumber() ? "" : where + " must be a number";
    return value.isText() ? "" : where + " must be text";
}

bool isImageList(const std::string& list) { return list == "signHereTabs" || list == "initialHereTabs"; }

/// Pages of the documents by their ids; sets the error when a document does not open or comes twice.
std::map<std::string, int> pagesOf(const Upload& upload, std::string& error) {
    std::map<std::string, int> pages;
    for (const UploadPart& part : upload.parts) {
        if (part.kind != Kind::Document || !error.empty()) continue;
        const PdfFindings findings = checkPdf(part.body);
        if (!findings.ok()) error = "document " + part.documentId + ": " + findings.error;
        if (!pages.emplace(part.documentId, findings.pages).second)
            error = "document " + part.documentId + " has two parts";
    }
    return pages;
}

std::string checkDocuments(const Json& envelope, const std::map<std::string, int>& pages) {
    std::set<std::string> named;
    for (const Json& document : envelope.array("documents")) {
        const std::string& id = document.text("documentId");
        if (!pages.contains(id)) return "document " + id + " has no part";
        if (document.text("name").empty()) return "document " + id + " has no name";
        if (!named.insert(id).second) return "document " + id + " is listed twice";
    }
    for (const auto& [id, count] : pages)
        if (!named.contains(id)) return "the part of document " + id + " belongs to no document";
    return named.empty() ? "the envelope has no document" : "";
}

std::string checkPlace(const Json& tab, const std::string& documentId,
                       const std::map<std::string, int>& pages) {
    const std::string name = "tab " + tab.text("tabId");
    const auto document = pages.find(documentId);
    if (document == pages.end()) return name + " lies on no document of the envelope";
    const auto page = wholeNumber(tab.text("pageNumber"));
    if (!page || *page < 1 || *page > static_cast<unsigned long long>(document->second))
        return name + " lies on no page of its document";
    const JsonResult x = parseJson(tab.text("xPosition"));
    const JsonResult y = parseJson(tab.text("yPosition"));
    return x.ok() && y.ok() && x.value.isNumber() && y.value.isNumber() ? "" : name + " has no position";
}

std::string checkTabs(const Json& signer, const std::map<std::string, int>& pages,
                      std::set<std::string>& imageTabs, std::set<std::string>& ids) {
    std::string error;
    forEachTab(signer, [&](const std::string& list, const std::string& documentId, const Json& tab) {
        const std::string& id = tab.text("tabId");
        if (!error.empty()) return;
        if (error = checkPlace(tab, documentId, pages); !error.empty()) return;
        const std::string& owner = tab.text("recipientId");
        if (!owner.empty() && owner != signer.text("recipientId"))
            error = "tab " + id + " belongs to another recipient";
        if (!id.empty() && !ids.insert(id).second) error = "tab " + id + " comes twice";
        if (!isImageList(list)) return;
        if (!tab.text("imageDataBase64").empty()) error = "tab " + id + " carries its image in the JSON";
        imageTabs.insert(id);
    });
    return error;
}

std::string checkRecipients(const Json& envelope, const std::map<std::string, int>& pages,
                            std::set<std::string>& imageTabs) {
    const Json* recipients = envelope.find("recipients");
    std::string error;
    std::set<std::string> ids;
    std::set<std::string> tabIds;
    if (recipients)
        forEachSigner(*recipients, [&](const Json& signer) {
            const std::string& id = signer.text("recipientId");
            if (!error.empty()) return;
            if (id.empty()) error = "a recipient has no recipientId";
            if (!ids.insert(id).second) error = "recipient " + id + " comes twice";
            if (error.empty()) error = checkTabs(signer, pages, imageTabs, tabIds);
        });
    return error.empty() && ids.empty() ? "the envelope has no signer" : error;
}

std::string checkImages(const Upload& upload, const std::set<std::string>& imageTabs) {
    std::set<std::string> seen;
    for (const UploadPart& part : upload.parts) {
        if (part.kind != Kind::Image) continue;
        if (!imageTabs.contains(part.tabId)) return "the image of tab " + part.tabId + " belongs to no tab";
        if (!seen.insert(part.tabId).second) return "the image of tab " + part.tabId + " comes twice";
        if (const auto problem = checkPng(part.body); !problem.empty())
            return "the image of tab " + part.tabId + ": " + problem;
    }
    return {};
}

std::string checkFields(const Json& envelope) {
    if (!envelope.isObject()) return "the envelope is not an object";
    if (auto problem = checkScalars(envelope); !problem.empty()) return problem;
    if (envelope.text("status") != "sent") return "status is not sent";
    if (!isUuid(envelope.text("transactionId"))) return "transactionId is not a UUID";
    if (envelope.text("DisableResponsiveDocument") != "true") return "DisableResponsiveDocument is not true";
    return {};
}

bool hasSigned(const Json& signer) {
    const Json* offline = signer.find("offlineAttributes");
    return !signer.text("signedDateTime").empty() ||
           (offline && !offline->text("offlineSigningHash").empty());
}

} // namespace

void forEachSigner(const Json& recipients, const std::function<void(const Json&)>& call) {
    for (const char* list : {"inPersonSigners", "signers"})
        for (const Json& signer : recipients.array(list))
            call(signer);
}

void forEachTab(const Json& recipient,
                const std::function<void(const std::string&, const std::string&, const Json&)>& call) {
    const Json* tabs = recipient.find("tabs");
    if (!tabs) return;
    for (const auto& [list, entries] : tabs->members())
        for (const Json& entry : entries.items()) {
            if (list != "radioGroupTabs") call(list, entry.text("documentId"), entry);
            for (const Json& radio : entry.array("radios"))
                call(list, entry.text("documentId"), radio);
        }
}

std::string checkScalars(const Json& envelope) { return checkScalar(envelope, "", ""); }

std::string checkOfflineEnvelope(const Upload& upload) {
    const Json& envelope = upload.envelope;
    std::set<std::string> imageTabs;
    std::string error = checkFields(envelope);
    std::map<std::string, int> pages;
    if (error.empty()) pages = pagesOf(upload, error);
    if (error.empty()) error = checkDocuments(envelope, pages);
    if (error.empty()) error = checkRecipients(envelope, pages, imageTabs);
    if (error.empty()) error = checkImages(upload, imageTabs);
    return error;
}

std::vector<std::string> warningsOf(const Upload& upload) {
    std::vector<std::string> warnings;
    std::set<std::string> images;
    for (const UploadPart& part : upload.parts)
        images.insert(part.tabId);
    const Json* recipients = upload.envelope.find("recipients");
    if (!recipients) return warnings;
    forEachSigner(*recipients, [&](const Json& signer) {
        if (!hasSigned(signer)) return;
        const std::string who = "recipient " + signer.text("recipientId");
        forEachTab(signer, [&](const std::string& list, const std::string&, const Json& tab) {
            const std::string which = ", tab " + tab.text("tabId");
            const bool image = isImageList(list);
            if (image && tab.text("optional") != "true" && !images.contains(tab.text("tabId")))
                warnings.push_back(who + " has signed" + which + " has no image");
            if (list == "textTabs" && tab.text("required") == "true" && tab.text("value").empty())
                warnings.push_back(who + " has signed" + which + " is required and empty");
        });
    });
    return warnings;
}

} // namespace norvane::sandbox
