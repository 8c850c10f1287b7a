#pragma once

#include <cairo.h>

#include <string>

namespace norvane::sandbox {

/// A PDF file in the making, US Letter pages. The same drawing gives the same bytes on every run.
class PdfCanvas {
  public:
    static constexpr double kPageWidth = 612;
    static constexpr double kPageHeight = 792;

    explicit PdfCanvas(const std::string& title);
    ~PdfCanvas();
    PdfCanvas(const PdfCanvas&) = delete;
    PdfCanvas& operator=(const PdfCanvas&) = delete;

    cairo_t* context() const { return context_; }
    /// Ends the file and answers its bytes; nothing may be drawn afterwards. Throws std::runtime_error when
    /// the drawing failed.
    std::string finish();

  private:
    std::string bytes_;
    cairo_surface_t* surface_;
    cairo_t* context_;
};

} // namespace norvane::sandbox
