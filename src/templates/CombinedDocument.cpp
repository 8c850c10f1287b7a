#include "src/templates/CombinedDocumentName.h"

#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/pdf/PdfDocument.h>
#include <norvane/platform/Platform.h>
#include <norvane/store/DocumentFiles.h>

// The part of an envelope that joins its documents. It stands above the records because it opens PDFs.

namespace norvane {
namespace {

Result<Data> bytesOf(const NVMDocument& document) {
    if (document.pdf) return *document.pdf;
    return NVM_verifiedDataWithPath(document.sandboxFilePath.value_or(""), std::nullopt,
                                    document.name.value_or(""));
}

struct JoinedPdf {
    Data bytes;
    std::size_t pages;
};

Result<JoinedPdf> joined(const DocumentList& documents) {
    std::vector<std::shared_ptr<PdfDocument>> pdfs;
    Data last;
    for (const auto& document : documents) {
        auto bytes = bytesOf(*document);
        if (!bytes) return bytes.error();
        last = *std::move(bytes);
        auto pdf = PdfDocument::open(last);
        if (!pdf) return pdf.error();
        pdfs.push_back(*std::move(pdf));
    }
    if (pdfs.size() == 1) return JoinedPdf{last, pdfs.front()->pageCount()};
    const auto whole = PdfDocument::join(pdfs);
    if (!whole) return whole.error();
    auto bytes = (*whole)->save();
    if (!bytes) return bytes.error();
    return JoinedPdf{*std::move(bytes), (*whole)->pageCount()};
}

} // namespace

void NVMEnvelopeDefinition::createCombinedDocumentWithCompletion(std::function<void(Failure)> completion) {
    const DocumentList sorted = sortedDocumentsByOrder();
    auto pdf = joined(sorted);
    Failure failure;
    if (pdf) {
        auto combined = std::make_shared<NVMDocument>();
        combined->documentId = kCombinedDocumentId;
        combined->name = combinedDocumentName(sorted);
        combined->uri = documentsCombinedUri;
        combined->pages = std::to_string(pdf->pages);
        combined->pdf = std::move(pdf->bytes);
        combinedDocument = std::move(combined);
    } else {
        failure = pdf.error();
    }
    Platform::current().executors->mainQueue()->async(
        [completion = std::move(completion), failure] { completion(failure); });
}

} // namespace norvane
