#include "src/store/EnvelopeDocuments.h"

#include "src/store/FileJournal.h"
#include "src/store/StoreErrorOf.h"
#include "src/store/StoreWork.h"

#include <norvane/platform/Platform.h>
#include <norvane/store/DocumentFiles.h>

#include <system_error>

namespace norvane {

namespace {

std::string nameOf(const NVMCDDocument& document) {
    return document.name.value_or(document.documentId.value_or(""));
}

bool isThere(const std::string& path) {
    const auto file = NVM_documentsPathByAppendingPathComponent(path);
    std::error_code ignored;
    return file && std::filesystem::is_regular_file(*file, ignored);
}

void nameFile(NVMCDDocument& document, const std::string& path) {
    document.sandboxFilePath = path;
    document.filePath = path;
}

} // namespace

void EnvelopeDocuments::discard() {
    if (written_.empty()) return;
    // A save that failed may yet be found complete by the next set-up. A later one that succeeds takes its
    // place, and only then do the files go; else they stay in the journal.
    const auto settle = [&](Connection& connection) {
        for (const auto& path : written_)
            FileJournal(connection).add(path, StoreWork::session(store_));
    };
    if (!StoreWork::write(store_, settle)) FileJournal::removeDropped(store_, written_);
    written_.clear();
}

Failure EnvelopeDocuments::prepare(const NVMEnvelopeTemplate& envelope, NVMCDEnvelopeDefinition& stored,
                                   std::int64_t ownerRow) {
    if (!envelope.documents || !stored.documents) return std::nullopt;
    for (std::size_t index = 0; index < envelope.documents->size() && index < stored.documents->size();
         ++index) {
        if (auto error = prepare(*(*envelope.documents)[index], *(*stored.documents)[index], ownerRow))
            return error;
    }
    return std::nullopt;
}

Failure EnvelopeDocuments::prepare(const NVMDocument& document, NVMCDDocument& stored,
                                   std::int64_t ownerRow) {
    const std::string path = stored.sandboxFilePath.value_or("");
    if (!path.empty() && isThere(path)) return takeFile(stored, ownerRow);
    if (document.pdf && !document.pdf->empty()) return writeFile(*document.pdf, stored);
    if (path.empty()) return std::nullopt;
    return documentDamaged(nameOf(stored), "has no file.");
}

/// A file that something else names too, a template's for one, is not this envelope's to keep: it gets its
/// own.
Failure EnvelopeDocuments::takeFile(NVMCDDocument& stored, std::int64_t ownerRow) {
    const std::string path = *stored.sandboxFilePath;
    const auto file = *NVM_documentsPathByAppendingPathComponent(path);
    bool isShared = false;
    std::optional<std::string> digest;
    const auto look = [&](Connection& connection) {
        isShared = FileJournal(connection).isNamedOutside(path, ownerRow);
        digest = FileJournal(connection).digest(path);
    };
    if (auto error = StoreWork::read(store_, look)) return error;
    if (!digest) {
        const auto computed = Platform::current().files->sha256(file);
        if (!computed) return computed.error();
        digest = *computed;
    }
    stored._sha256 = digest;
    if (!isShared) {
        nameFile(stored, path);
        return std::nullopt;
    }
    const std::string own = NVM_envelopeDocumentSubPath();
    if (auto error = NVM_linkOrCopyDocumentFile(file, own, kEnvelopeDocumentsFolder)) return error;
    written_.push_back(own);
    nameFile(stored, own);
    return std::nullopt;
}

Failure EnvelopeDocuments::writeFile(const Data& pdf, NVMCDDocument& stored) {
    const std::string path = NVM_envelopeDocumentSubPath();
    if (auto error = NVM_encryptedWriteToFile(pdf, path, kEnvelopeDocumentsFolder)) return error;
    written_.push_back(path);
    nameFile(stored, path);
    stored._sha256 = sha256Hex(pdf.view());
    return std::nullopt;
}

std::vector<std::string> EnvelopeDocuments::paths(const NVMCDEnvelopeDefinition& envelope) {
    std::vector<std::string> paths;
    if (!envelope.documents) return paths;
    for (const auto& document : *envelope.documents)
        if (document->sandboxFilePath && !document->sandboxFilePath->empty())
            paths.push_back(*document->sandboxFilePath);
    return paths;
}

} // namespace norvane
