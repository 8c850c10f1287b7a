#pragma once

namespace norvane {

/// A rectangle by two corners in points, y growing upwards from the bottom edge of the page's media box. It
/// is kept as given: y1 may lie above y2.
struct PdfRect {
    double x1 = 0;
    double y1 = 0;
    double x2 = 0;
    double y2 = 0;

    double width() const { return x2 - x1; }
    /// The same area with (x1, y1) as its bottom-left corner.
    PdfRect normalized() const {
        return {x1 < x2 ? x1 : x2, y1 < y2 ? y1 : y2, x1 < x2 ? x2 : x1, y1 < y2 ? y2 : y1};
    }
    friend bool operator==(const PdfRect&, const PdfRect&) = default;
};

} // namespace norvane
