#include <norvane/pdf/NVMPDFDocument.h>

#include <numeric>

namespace norvane {

NVMPDFDocument NVMPDFDocument::documentWithData(const Data& data,
                                                const std::vector<std::size_t>& sourcePageCounts) {
    NVMPDFDocument document;
    auto opened = PdfDocument::open(data);
    if (!opened) {
        document.error_ = opened.error();
        return document;
    }
    document.document_ = std::move(*opened);
    const std::size_t pages = document.document_->pageCount();
    const auto sum = std::accumulate(sourcePageCounts.begin(), sourcePageCounts.end(), std::size_t{0});
    if (sum == pages) {
        for (const std::size_t count : sourcePageCounts)
            document.providers_.push_back({count});
    } else {
        document.providers_.push_back({pages});
    }
    return document;
}

std::size_t NVMPDFDocument::pageCount() const { return document_ ? document_->pageCount() : 0; }

Size NVMPDFDocument::sizeForPage(std::size_t pageNumber) const {
    if (!document_) return {};
    const auto page = document_->page(pageNumber);
    return page ? page->size() : Size{};
}

} // namespace norvane
