#include "src/api/OfflineEnvelopeFiles.h"

#include <norvane/api/NVESEnvelopes.h>
#include <norvane/api/NVESRecipients.h>
#include <norvane/api/NVESTabs.h>
#include <norvane/platform/Base64.h>
#include <norvane/platform/Url.h>

namespace norvane {
namespace {

using Files = std::vector<NVESFileEntry>;

std::string textOf(const field::Text& text) { return text.value_or("(null)"); }

/// The address is a file URL; a plain path does as well.
std::filesystem::path pathOf(const std::string& address) {
    const auto url = Url::parse(address);
    return url && url->isFile() ? url->filePath() : address;
}

void takeDocuments(NVESEnvelopeDefinition& definition, Files& files) {
    if (!definition.documents) return;
    for (const auto& document : *definition.documents) {
        field::Text& address = document->fileSandboxURL.text;
        if (!address) continue;
        const std::string identifier = textOf(document->documentId);
        files.push_back(
            {NVESFileEntry::Kind::Document, "documentId-" + identifier, pathOf(*address), {}, identifier});
        address.reset();
    }
}

template <class Tab>
void takeImages(const field::List<Tab>& tabs, Files& files) {
    if (!tabs) return;
    for (const auto& tab : *tabs) {
        if (!tab->imageDataBase64 || tab->imageDataBase64->empty()) continue;
        const std::string identifier = textOf(tab->tabId);
        files.push_back({NVESFileEntry::Kind::TabImage,
                         "tabId-" + identifier,
                         {},
                         decodeBase64(*tab->imageDataBase64),
                         identifier});
        tab->imageDataBase64.reset();
    }
}

template <class Signer>
void addTabImages(const field::List<Signer>& signers, Files& files) {
    if (!signers) return;
    for (const auto& signer : *signers) {
        if (!signer->tabs) continue;
        takeImages(signer->tabs->signHereTabs, files);
        takeImages(signer->tabs->initialHereTabs, files);
    }
}

} // namespace

std::vector<NVESFileEntry> takeOfflineEnvelopeFiles(NVESEnvelopeDefinition& definition) {
    Files files;
    takeDocuments(definition, files);
    if (definition.recipients) {
        addTabImages(definition.recipients->signers, files);
        addTabImages(definition.recipients->inPersonSigners, files);
    }
    return files;
}

void setDocumentFiles(NVESEnvelopeDefinition& definition,
                      const std::map<std::string, std::filesystem::path>& files) {
    if (!definition.documents) return;
    for (const auto& document : *definition.documents) {
        const auto file = files.find(textOf(document->documentId));
        if (file != files.end()) document->fileSandboxURL.text = file->second.string();
    }
}

} // namespace norvane
