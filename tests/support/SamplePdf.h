#pragma once

#include <norvane/platform/Data.h>

#include <string>
#include <vector>

namespace norvane {

/// A PDF made of objects in text form, numbered from 1; the first is the catalog. Cross-reference table and
/// trailer are added.
Data pdfOfObjects(const std::vector<std::string>& objects, const std::string& trailerEntries = {});

/// A sound PDF of blank pages, each with the given entries.
Data blankPdf(std::size_t pages, const std::string& pageEntries = "/MediaBox [0 0 612 792]");

/// What a viewer shows of a page.
struct RenderedPage {
    int width = 0;
    int height = 0;
    std::string rgb; ///< three bytes a pixel, rows from the top

    unsigned char at(int x, int y, int component) const {
        return static_cast<unsigned char>(rgb[static_cast<std::size_t>((y * width + x) * 3 + component)]);
    }
    /// Whether the pixel is clearly darker than paper.
    bool isInk(int x, int y) const;
    /// Ink pixels inside the rectangle.
    int inkCount(int x, int y, int columns, int rows) const;
};

/// The page drawn by Poppler or by MuPDF, at 60 dots an inch. Throws when the viewer fails.
RenderedPage renderWithPoppler(const Data& pdf, int page);
RenderedPage renderWithMupdf(const Data& pdf, int page);
/// What `qpdf --check` says: empty when the file is sound.
std::string problemsOf(const Data& pdf);

} // namespace norvane
