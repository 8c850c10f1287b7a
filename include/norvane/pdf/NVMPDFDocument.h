#pragma once

#include <norvane/pdf/PdfDocument.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace norvane {

/// One source document of a combined PDF.
struct NVMPDFDocumentProvider {
    std::size_t pageCount = 0;
};

/// The document on the signing screen: the engine's document made from the envelope's combined PDF.
class NVMPDFDocument {
  public:
    /// Opens the bytes. `sourcePageCounts` tells how many pages each source document has, in order; without
    /// it, or when it does not add up to the pages there are, the whole PDF counts as one document.
    static NVMPDFDocument documentWithData(const Data& data,
                                           const std::vector<std::size_t>& sourcePageCounts = {});

    bool isValid() const { return document_ != nullptr; }
    /// Why the bytes could not be opened, when they could not.
    const Failure& error() const { return error_; }
    std::size_t pageCount() const; ///< 0 when not valid
    const std::vector<NVMPDFDocumentProvider>& documentProviders() const { return providers_; }
    /// Width and height of the media box in points; 0 x 0 when there is no such page. Numbers start at 1.
    Size sizeForPage(std::size_t pageNumber) const;
    /// Null when not valid.
    const std::shared_ptr<PdfDocument>& engineDocument() const { return document_; }

  private:
    std::shared_ptr<PdfDocument> document_;
    Failure error_;
    std::vector<NVMPDFDocumentProvider> providers_;
};

} // namespace norvane
