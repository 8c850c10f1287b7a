#pragma once

#include <norvane/pdf/PdfRect.h>
#include <norvane/platform/Geometry.h>

#include <cstddef>
#include <memory>
#include <mutex>
#include <string>

namespace norvane {

class PdfImage;

/// Standard annotation flags, by bit index.
enum class PdfAnnotationFlag {
    Invisible = 0,
    Hidden = 1,
    Print = 2,
    NoZoom = 3,
    NoRotate = 4,
    NoView = 5,
    ReadOnly = 6,
    Locked = 7,
    ToggleNoView = 8,
    LockedContents = 9,
};

/// A solid border in points. The corner radii are shortened to what the annotation's size allows.
struct PdfBorderStyle {
    double width = 1;
    double horizontalCornerRadius = 0;
    double verticalCornerRadius = 0;
    friend bool operator==(const PdfBorderStyle&, const PdfBorderStyle&) = default;
};

/// An annotation of a page: a handle, whose copies mean the same annotation, and which keeps the document
/// alive. A new annotation prints, and shows nothing until `refreshAppearance` or `setAppearance`. What it
/// shows is drawn when the document is saved, as the annotation stands then.
class PdfAnnotation {
  public:
    PdfAnnotation() = default; ///< no annotation: setters do nothing, getters give defaults

    bool isValid() const { return state_ != nullptr; }
    int objectNumber() const;       ///< of the PDF object; 0 without an annotation
    std::size_t pageNumber() const; ///< from 1; 0 without an annotation

    /// As last given, corners in the order given; the file holds it normalised.
    PdfRect rect() const;
    void resize(const PdfRect& rect);

    /// The identifier stored with the annotation (its name entry), empty when there is none.
    std::string uniqueId() const;
    void setUniqueId(const std::string& uniqueId);
    bool flag(PdfAnnotationFlag flag) const;
    void setFlag(PdfAnnotationFlag flag, bool isSet);

    // Free text. Shown after `refreshAppearance`.
    std::string contents() const;
    void setContents(const std::string& contents);
    double fontSize() const; ///< points; 12 unless set
    void setFontSize(double points);
    void setBorderStyle(const PdfBorderStyle& style);
    void setLineColor(const Color& color);
    void setTextColor(const Color& color);
    /// Without alpha, as before the first call, the page shows through.
    void setFillColor(const Color& color);
    /// Draws border, ground and contents anew. Lines wrap at the width; text too long for the box is set
    /// smaller, down to 4 points, so that it stays inside.
    void refreshAppearance();

    /// Shows the image with its lower-left corner at (x, y) of the page, scaled to the size, clipped to the
    /// annotation's rectangle.
    void setAppearance(const PdfImage& image, double x, double y, double width, double height);

    /// The document's lock, as `PdfDocument::lock`. An empty lock without an annotation.
    [[nodiscard]] std::unique_lock<std::recursive_mutex> lockDocument() const;

    friend bool operator==(const PdfAnnotation& a, const PdfAnnotation& b) { return a.state_ == b.state_; }

    struct State;
    explicit PdfAnnotation(std::shared_ptr<State> state)
        : state_(std::move(state)) {}

  private:
    friend class PdfPage;
    std::shared_ptr<State> state_;
};

/// The width in points that the text takes on one line in the system font, as annotations show it.
double pdfTextWidth(const std::string& text, double fontSize);
/// The height of one line, in points.
double pdfLineHeight(double fontSize);

} // namespace norvane
