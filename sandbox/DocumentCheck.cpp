#include "sandbox/DocumentCheck.h"

#include <cairo.h>
#include <qpdf/JSON.hh>
#include <qpdf/QPDF.hh>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <exception>
#include <memory>

namespace norvane::sandbox {

namespace {

constexpr std::uint32_t kLongestSide = 8'192;
constexpr std::size_t kImageHeaderBytes = 33;

std::uint32_t bigEndian(std::string_view bytes) {
    std::uint32_t value = 0;
    for (const char byte : bytes.substr(0, 4))
        value = (value << 8) | static_cast<unsigned char>(byte);
    return value;
}

cairo_status_t readNext(void* rest, unsigned char* to, unsigned length) {
    auto& bytes = *static_cast<std::string_view*>(rest);
    if (bytes.size() < length) return CAIRO_STATUS_READ_ERROR;
    std::memcpy(to, bytes.data(), length);
    bytes.remove_prefix(length);
    return CAIRO_STATUS_SUCCESS;
}

} // namespace

PdfFindings checkPdf(std::string_view bytes) {
    PdfFindings findings;
    if (!bytes.starts_with("%PDF-")) return {0, "it does not begin as a PDF"};
    try {
        QPDF pdf;
        pdf.setSuppressWarnings(true);
        pdf.processMemoryFile("document", bytes.data(), bytes.size());
        findings.pages = static_cast<int>(pdf.getAllPages().size());
        if (pdf.anyWarnings())
            findings.error = "it is damaged: " + pdf.getWarnings().front().getMessageDetail();
        if (findings.pages == 0) findings.error = "it has no page";
    } catch (const std::exception& problem) {
        findings.error = std::string("it does not open: ") + problem.what();
    }
    return findings;
}

std::string checkPng(std::string_view bytes) {
    static constexpr std::string_view kSignature("\x89PNG\r\n\x1a\n", 8);
    if (!bytes.starts_with(kSignature)) return "it does not begin as a PNG";
    if (bytes.size() < kImageHeaderBytes || bytes.substr(12, 4) != "IHDR") return "its header is missing";
    const auto width = bigEndian(bytes.substr(16));
    const auto height = bigEndian(bytes.substr(20));
    if (width == 0 || height == 0 || std::max(width, height) > kLongestSide)
        return "its size is out of bounds";
    const std::unique_ptr<cairo_surface_t, void (*)(cairo_surface_t*)> image(
        cairo_image_surface_create_from_png_stream(readNext, &bytes), cairo_surface_destroy);
    if (cairo_surface_status(image.get()) != CAIRO_STATUS_SUCCESS) return "its data does not decode";
    return bytes.empty() ? "" : "something follows its end";
}

} // namespace norvane::sandbox
