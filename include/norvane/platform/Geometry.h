#pragma once

namespace norvane {

/// A position in points, y growing downwards unless an operation says otherwise.
struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
    double width = 0;
    double height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

/// A rectangle by its top-left corner and its size.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    friend bool operator==(const Rect&, const Rect&) = default;
};

/// Components from 0 to 1, alpha not multiplied in.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;
    friend bool operator==(const Color&, const Color&) = default;
};

} // namespace norvane
