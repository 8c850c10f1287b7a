#pragma once

#include <norvane/platform/Geometry.h>

#include <string>
#include <string_view>

namespace norvane {

/// The number with up to four decimals, independent of the locale; 0 for what is no finite number.
std::string pdfNumber(double value);

/// The operators of a content stream, in the PDF's own coordinates (y upwards).
class ContentStream {
  public:
    void save() { raw("q\n"); }
    void restore() { raw("Q\n"); }
    void raw(std::string_view operators) { text_ += operators; }
    ContentStream& number(double value); ///< and a blank
    void op(std::string_view name);      ///< an operator, after its numbers

    void fillColor(const Color& color);
    void strokeColor(const Color& color);
    void rectangle(const Rect& rectangle);
    /// A rectangle by its lower-left corner whose corners are quarter ellipses.
    void roundedRectangle(const Rect& rectangle, double radiusX, double radiusY);

    const std::string& text() const { return text_; }

  private:
    void curve(double x1, double y1, double x2, double y2, double x3, double y3);
    std::string text_;
};

} // namespace norvane
