#include "src/pdf/ContentStream.h"

#include <array>
#include <charconv>
#include <cmath>

namespace norvane {

std::string pdfNumber(double value) {
    std::array<char, 400> digits{};
    const double rounded = std::isfinite(value) ? std::round(value * 10'000) / 10'000 + 0.0 : 0;
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), rounded, std::chars_format::fixed);
    return {digits.data(), end.ptr};
}

ContentStream& ContentStream::number(double value) {
    text_ += pdfNumber(value);
    text_ += ' ';
    return *this;
}

void ContentStream::op(std::string_view name) {
    text_ += name;
    text_ += '\n';
}

void ContentStream::fillColor(const Color& color) {
    number(color.red).number(color.green).number(color.blue).op("rg");
}

void ContentStream::strokeColor(const Color& color) {
    number(color.red).number(color.green).number(color.blue).op("RG");
}

void ContentStream::rectangle(const Rect& r) {
    number(r.x).number(r.y).number(r.width).number(r.height).op("re");
}

void ContentStream::roundedRectangle(const Rect& r, double radiusX, double radiusY) {
    constexpr double kArc = 0.5522847498; // control points of a curve that passes for a quarter circle
    const double left = r.x;
    const double right = r.x + r.width;
    const double bottom = r.y;
    const double top = r.y + r.height;
    const double gapX = radiusX * (1 - kArc);
    const double gapY = radiusY * (1 - kArc);
    number(left + radiusX).number(bottom).op("m");
    number(right - radiusX).number(bottom).op("l");
    curve(right - gapX, bottom, right, bottom + gapY, right, bottom + radiusY);
    number(right).number(top - radiusY).op("l");
    curve(right, top - gapY, right - gapX, top, right - radiusX, top);
    number(left + radiusX).number(top).op("l");
    curve(left + gapX, top, left, top - gapY, left, top - radiusY);
    number(left).number(bottom + radiusY).op("l");
    curve(left, bottom + gapY, left + gapX, bottom, left + radiusX, bottom);
    op("h");
}

void ContentStream::curve(double x1, double y1, double x2, double y2, double x3, double y3) {
    number(x1).number(y1).number(x2).number(y2).number(x3).number(y3).op("c");
}

} // namespace norvane
