#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/pdf/PdfDocument.h>
#include <norvane/platform/Platform.h>
#include <norvane/sdk/Errors.h>
#include <norvane/store/DocumentFiles.h>
#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/NVMCDTemplates.h>
#include <norvane/store/ObjectStore.h>
#include <norvane/templates/NVMTemplatesHandler.h>

#include <algorithm>

namespace norvane {
namespace {

/// A PDF that goes into an envelope's documents, at a place counted in pages of the whole envelope.
struct Insertion {
    std::shared_ptr<PdfDocument> pdf;
    std::size_t position;
};

NVMError signaturesWouldBreak(const std::string& name) {
    NVMError error = NVM_errorDocumentCreationGeneric();
    error.userInfo.insert_or_assign("detail",
                                    "\"" + name + "\" carries digital signatures that a change would void.");
    return error;
}

/// Gives the documents of a new envelope files of their own. What it made goes with it unless it is told to
/// keep.
class EnvelopeFiles {
  public:
    explicit EnvelopeFiles(bool includePdfs)
        : includePdfs_(includePdfs) {}
    ~EnvelopeFiles() { NVMTemplatesHandler::deleteCachedPdfs(paths_); }
    EnvelopeFiles(const EnvelopeFiles&) = delete;
    EnvelopeFiles& operator=(const EnvelopeFiles&) = delete;
    void keep() { paths_.clear(); }

    /// The file is the stored document's, under a new name.
    Failure link(const NVMCDDocument& stored, NVMDocument& document) {
        const std::string from = stored.sandboxFilePath.value_or("");
        const std::string name = stored.name.value_or("");
        if (includePdfs_) {
            auto bytes = NVM_verifiedDataWithPath(from, stored._sha256, name);
            if (!bytes) return bytes.error();
            document.pdf = *std::move(bytes);
        } else if (auto error = NVM_verifyDocumentWithPath(from, stored._sha256, name)) {
            return error;
        }
        const std::string path = NVM_envelopeDocumentSubPath();
        if (auto error = NVM_linkOrCopyDocumentFile(*NVM_documentsPathByAppendingPathComponent(from), path,
                                                    kEnvelopeDocumentsFolder)) {
            return error;
        }
        adopt(path, document);
        return std::nullopt;
    }

    /// The file is the opened document with the other one inserted behind `position` of its pages.
    Failure insert(PdfDocument& pdf, const PdfDocument& other, std::size_t position, NVMDocument& document) {
        if (pdf.hasDigitalSignatures()) return signaturesWouldBreak(document.name.value_or(""));
        if (auto error = pdf.insertDocument(other, position)) return error;
        auto bytes = pdf.save();
        if (!bytes) return bytes.error();
        const std::string path = NVM_envelopeDocumentSubPath();
        if (auto error = NVM_encryptedWriteToFile(*bytes, path, kEnvelopeDocumentsFolder)) return error;
        adopt(path, document);
        document.pages = std::to_string(pdf.pageCount());
        if (includePdfs_) document.pdf = *std::move(bytes);
        return std::nullopt;
    }

  private:
    void adopt(const std::string& path, NVMDocument& document) {
        paths_.push_back(path);
        document.sandboxFilePath = path;
    }

    const bool includePdfs_;
    std::vector<std::string> paths_;
};

Result<std::shared_ptr<PdfDocument>> openStored(const NVMCDDocument& stored) {
    auto bytes = NVM_verifiedDataWithPath(stored.sandboxFilePath.value_or(""), stored._sha256,
                                          stored.name.value_or(""));
    if (!bytes) return bytes.error();
    return PdfDocument::open(*bytes);
}

void moveTabsBehind(NVMEnvelopeDefinition& envelope, const NVMDocument& document, std::size_t position,
                    std::size_t pages) {
    for (const auto& tab : envelope.tagsForDocumentId(document.documentId)) {
        if (tab->pageNumber.value_or(1) > static_cast<double>(position)) {
            tab->increasePageNumberByCount(static_cast<std::int64_t>(pages));
        }
    }
}

using DocumentPair = std::pair<std::shared_ptr<NVMCDDocument>, std::shared_ptr<NVMDocument>>;

/// Stored documents with those of the envelope that were made from them, as the envelope orders them.
std::vector<DocumentPair> documentPairs(const NVMCDEnvelopeTemplate& stored,
                                        const NVMEnvelopeDefinition& envelope) {
    std::vector<DocumentPair> pairs;
    if (!stored.documents || !envelope.documents) return pairs;
    for (const auto& document : envelope.sortedDocumentsByOrder()) {
        const auto found = std::find(envelope.documents->begin(), envelope.documents->end(), document);
        pairs.emplace_back(
            stored.documents->at(static_cast<std::size_t>(found - envelope.documents->begin())), document);
    }
    return pairs;
}

/// The insertion goes ahead of the first document that ends behind its position, into it, or after the last.
Failure makeFilesWithInsertion(const std::vector<DocumentPair>& pairs, const Insertion& insertion,
                               NVMEnvelopeDefinition& envelope, EnvelopeFiles& files) {
    std::size_t ahead = 0;
    bool isInserted = false;
    for (const auto& [stored, document] : pairs) {
        if (!isInserted) {
            auto pdf = openStored(*stored);
            if (!pdf) return pdf.error();
            const std::size_t pages = (*pdf)->pageCount();
            const bool isLast = document == pairs.back().second;
            if (isLast || insertion.position < ahead + pages) {
                const std::size_t position = std::min(insertion.position - ahead, pages);
                if (auto error = files.insert(**pdf, *insertion.pdf, position, *document)) return error;
                moveTabsBehind(envelope, *document, position, insertion.pdf->pageCount());
                isInserted = true;
                continue;
            }
            ahead += pages;
        }
        if (auto error = files.link(*stored, *document)) return error;
    }
    return std::nullopt;
}

Failure makeFiles(const NVMCDEnvelopeTemplate& stored, const std::optional<Insertion>& insertion,
                  NVMEnvelopeDefinition& envelope, EnvelopeFiles& files) {
    const auto pairs = documentPairs(stored, envelope);
    if (insertion) {
        if (auto error = makeFilesWithInsertion(pairs, *insertion, envelope, files)) return error;
    } else {
        for (const auto& [storedDocument, document] : pairs) {
            if (auto error = files.link(*storedDocument, *document)) return error;
        }
    }
    if (!stored.combinedDocument || !envelope.combinedDocument) return std::nullopt;
    if (!insertion) return files.link(*stored.combinedDocument, *envelope.combinedDocument);
    auto combined = openStored(*stored.combinedDocument);
    if (!combined) return combined.error();
    return files.insert(**combined, *insertion->pdf, insertion->position, *envelope.combinedDocument);
}

} // namespace

Result<std::shared_ptr<NVMEnvelopeDefinition>>
NVMTemplatesHandler::createEnvelopeFromTemplateWithId(const std::string& templateId,
                                                      const std::optional<Data>& pdfToInsert,
                                                      std::size_t insertAtPosition, bool includePdfs) {
    const auto store = ObjectStore::defaultStore();
    const auto stored = store ? findTemplateWithId(templateId, store->defaultContext()) : nullptr;
    if (!stored) return NVM_errorTemplateNotInCache();
    std::optional<Insertion> insertion;
    if (pdfToInsert) {
        auto pdf = PdfDocument::open(*pdfToInsert);
        if (!pdf) return pdf.error();
        insertion = Insertion{*std::move(pdf), insertAtPosition};
    }
    auto envelope = std::make_shared<NVMEnvelopeDefinition>(*stored, false);
    // The template's own state is none of the envelope's: to the service it does not exist yet.
    envelope->envelopeId.reset();
    envelope->transactionId.reset();
    envelope->status.reset();
    EnvelopeFiles files(includePdfs);
    if (auto error = makeFiles(*stored, insertion, *envelope, files)) return *std::move(error);
    files.keep();
    return envelope;
}

} // namespace norvane
