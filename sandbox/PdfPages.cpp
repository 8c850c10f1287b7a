#include "sandbox/PdfPages.h"

#include <qpdf/Buffer.hh>
#include <qpdf/JSON.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFWriter.hh>

#include <cmath>
#include <deque>

namespace norvane::sandbox {

std::vector<PageSize> pageSizes(std::string_view pdf) {
    QPDF document;
    document.setSuppressWarnings(true);
    document.processMemoryFile("document", pdf.data(), pdf.size());
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
        source.setSuppressWarnings(true);
        source.processMemoryFile("document", bytes.data(), bytes.size());
        for (const auto& page : QPDFPageDocumentHelper(source).getAllPages())
            QPDFPageDocumentHelper(joined).addPage(page, false);
    }
    QPDFWriter writer(joined);
    writer.setOutputMemory();
    writer.setDeterministicID(true);
    writer.write();
    const std::shared_ptr<Buffer> buffer = writer.getBufferSharedPointer();
    return {reinterpret_cast<const char*>(buffer->getBuffer()), buffer->getSize()};
}

} // namespace norvane::sandbox
