#include <norvane/pdf/PdfDocument.h>
#include <norvane/pdf/PdfError.h>

#include <cstdlib>

using namespace norvane;

namespace {

void require(bool condition) {
    if (!condition) std::abort();
}

/// Does with a document what signing does with it.
void use(PdfDocument& document) {
    require(document.pageCount() > 0 && document.pageCount() <= PdfDocument::kMaximumPages);
    require(!document.page(0) && !document.page(document.pageCount() + 1));
    const auto page = document.page(document.pageCount());
    require(page.ok());
    const Size size = page->size();
    require(size.width > 0 && size.height > 0);
    auto annotation = page->createFreeText({10, size.height - 10, 94, size.height - 29});
    annotation.setContents("entry");
    annotation.refreshAppearance();
    page->pushFront(annotation);
    require(page->annotationAt({20, size.height - 20}).has_value());
}

} // namespace

/// Any bytes open as a document that can be signed, joined and opened again, or end in the engine's own
/// error.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    auto opened = PdfDocument::open(Data(bytes, size));
    if (!opened) {
        require(opened.error().domain == kPdfErrorDomain);
        return 0;
    }
    const auto document = std::move(*opened);
    const auto joined = PdfDocument::join({document, document});
    require(joined || joined.error().domain == kPdfErrorDomain);
    use(*document);
    const auto saved = document->save();
    if (!saved) {
        require(saved.error().domain == kPdfErrorDomain);
        return 0;
    }
    const auto again = PdfDocument::open(*saved);
    require(again && (*again)->pageCount() == document->pageCount());
    return 0;
}
