#include "sandbox/PdfPages.h"

#include <qpdf/Buffer.hh>
#include <qpdf/JSON.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFWriter.hh>

#include <cmath>
#include <deque>

namespace norvane::sandbox {

namespace {

void open(QPDF& document, std::string_view pdf) {
    document.setSuppressWarnings(true);
    document.processMemoryFile("document", pdf.data(), pdf.size());
}

std::string written(QPDF& document) {
    QPDFWriter writer(document);
    writer.setOutputMemory();
    writer.setDeterministicID(true);
    writer.write();
    const std::shared_ptr<Buffer> buffer = writer.getBufferSharedPointer();
    return {reinterpret_cast<const char*>(buffer->getBuffer()), buffer->getSize()};
}

} // namespace

std::vector<PageSize> pageSizes(std::string_view pdf) {
    QPDF document;
    open(document, pdf);
    std::vector<PageSize> sizes;
    for (auto& page : QPDFPageDocumentHelper(document).getAllPages()) {
        const auto box = page.getMediaBox().getArrayAsRectangle();
        sizes.push_back({static_cast<int>(std::lround(box.urx - box.llx)),
                         static_cast<int>(std::lround(box.ury - box.lly))});
    }
    return sizes;
}

std::string joinedPdf(const std::vector<std::string>& documents) {
    QPDF joined;
    joined.emptyPDF();
    std::deque<QPDF> sources; // must stay until the result is written
    for (const std::string& bytes : documents) {
        QPDF& source = sources.emplace_back();
        open(source, bytes);
        for (const auto& page : QPDFPageDocumentHelper(source).getAllPages())
            QPDFPageDocumentHelper(joined).addPage(page, false);
    }
    return written(joined);
}

std::string withPageTurned(std::string_view pdf, std::size_t number, int degrees) {
    QPDF document;
    open(document, pdf);
    QPDFPageDocumentHelper(document).getAllPages().at(number - 1).rotatePage(degrees, true);
    return written(document);
}

std::string withoutPage(std::string_view pdf, std::size_t number) {
    QPDF document;
    open(document, pdf);
    QPDFPageDocumentHelper pages(document);
    pages.removePage(pages.getAllPages().at(number - 1));
    return written(document);
}

} // namespace norvane::sandbox
