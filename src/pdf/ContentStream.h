#pragma once

#include <string>
#include <string_view>

#include <norvane/platform/Geometry.h>

namespace norvane {

/// The operators of a content stream, in the PDF's own coordinates (y upwards).
class ContentStream {
  public:
    void save() { raw("q\n"); }
    void restore() { raw("Q\n"); }
    void raw(std::string_view operators) { text_ += operators; }
    /// A number with up to four decimals, then a blank.
    ContentStream& number(double value);
    void op(std::string_view name); ///< an operator, after its numbers

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
