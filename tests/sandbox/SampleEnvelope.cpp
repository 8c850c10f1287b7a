#include "tests/sandbox/SampleEnvelope.h"

#include "sandbox/Template.h"
#include "sandbox/TemplateIds.h"
#include "sandbox/Text.h"

#include <stdexcept>

namespace norvane::sandbox {

std::string samplePng() {
    return base64Decoded("iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNkYPhfDwAChwGA60e6kgAAAAB"
                         "JRU5ErkJggg==")
        .value();
}

const Template& offeredTemplate(const std::string& templateId) {
    for (const Template& offered : templateCatalogue())
        if (offered.plan.templateId == templateId) return offered;
    throw std::out_of_range(templateId);
}

SampleEnvelope::SampleEnvelope() {
    const Template& source = offeredTemplate(kRentalTemplateId);
    json.set("documents", documentsJson(source)).set("recipients", source.recipients);
    json.set("transactionId", newUuid()).set("status", "sent").set("emailSubject", source.plan.emailSubject);
    json.set("DisableResponsiveDocument", "true");
    for (const Document& document : source.documents)
        parts.push_back({"form-data; name=\"documentId-" + document.id + "\"; filename=\"" + document.name +
                             "\"; documentId=\"" + document.id + "\"",
                         "application/pdf", document.pdf});
    signer().set("signerName", "Ada Finch").set("signedDateTime", "2025-04-01T10:00:00.000Z");
    for (const char* list : {"companyTabs", "titleTabs", "textTabs"})
        tab(list).set("value", "entered");
    for (const char* list : {"signHereTabs", "initialHereTabs"})
        parts.push_back({"form-data; tabId=\"" + tab(list).text("tabId") + "\"", "image/png", samplePng()});
}

Json& SampleEnvelope::signer() {
    return json.find("recipients")->find("inPersonSigners")->mutableItems()->front();
}

Json& SampleEnvelope::tab(const std::string& list) {
    return signer().find("tabs")->find(list)->mutableItems()->front();
}

std::string SampleEnvelope::body() const {
    std::vector<Part> all{{disposition, jsonType, json.write()}};
    all.insert(all.end(), parts.begin(), parts.end());
    std::string text;
    for (const Part& part : all)
        text += "--sample-boundary\r\nContent-Disposition: " + part.disposition +
                "\r\nContent-Type: " + part.contentType + "\r\n\r\n" + part.body + "\r\n";
    return text + "--sample-boundary--\r\n";
}

} // namespace norvane::sandbox
