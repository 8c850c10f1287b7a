#include "sandbox/PdfCanvas.h"

#include <cairo-pdf.h>

#include <stdexcept>

/// cairo 1.16 loses the fontconfig pattern of each font that it looks up. Weak: a program may have its own
/// list.
extern "C" __attribute__((weak)) const char*
__lsan_default_suppressions();                         // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions() { // NOLINT(bugprone-reserved-identifier)
    return "leak:libfontconfig.so\n";
}

namespace norvane::sandbox {

namespace {

cairo_status_t append(void* text, const unsigned char* bytes, unsigned length) {
    static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(bytes), length);
    return CAIRO_STATUS_SUCCESS;
}

} // namespace

PdfCanvas::PdfCanvas(const std::string& title)
    : surface_(cairo_pdf_surface_create_for_stream(append, &bytes_, kPageWidth, kPageHeight))
    , context_(cairo_create(surface_)) {
    cairo_pdf_surface_set_metadata(surface_, CAIRO_PDF_METADATA_TITLE, title.c_str());
    cairo_pdf_surface_set_metadata(surface_, CAIRO_PDF_METADATA_AUTHOR, "Harbour & Finch");
    cairo_pdf_surface_set_metadata(surface_, CAIRO_PDF_METADATA_CREATE_DATE, "2025-01-15T09:00:00Z");
}

PdfCanvas::~PdfCanvas() {
    cairo_destroy(context_);
    cairo_surface_destroy(surface_);
}

std::string PdfCanvas::finish() {
    cairo_surface_finish(surface_);
    const auto status = cairo_surface_status(surface_);
    if (status != CAIRO_STATUS_SUCCESS)
        throw std::runtime_error(std::string("cannot draw a document: ") + cairo_status_to_string(status));
    return std::move(bytes_);
}

} // namespace norvane::sandbox
