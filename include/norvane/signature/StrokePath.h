#pragma once

#include <norvane/platform/Geometry.h>

#include <vector>

namespace norvane {

/// A piece of a stroke: a curve with one control point, drawn with round caps at a width of its own (points).
struct QuadraticCurve {
    Point from;
    Point control;
    Point to;
    double lineWidth = 0;
};

/// One stroke: a dot where it begins, then curves. Caps and joins are round.
struct StrokePath {
    static constexpr double kDotRadius = 0.1;

    Point start;
    double lineWidth = 0; ///< of the dot, and of curves unless a stylus gave them their own
    std::vector<QuadraticCurve> curves;
};

} // namespace norvane
