#pragma once

#include <norvane/platform/Geometry.h>

#include <optional>

namespace norvane {

enum class TouchType { Finger = 0, Indirect = 1, Stylus = 2 };

/// One sample of a finger or stylus on a surface, in the surface's points.
struct Touch {
    Point location;
    Point previousLocation; ///< of the sample before; the location itself for the first
    std::optional<Point> preciseLocation;
    std::optional<Point> precisePreviousLocation;
    double time = 0; ///< seconds from any fixed moment
    TouchType type = TouchType::Finger;
    double force = 0;         ///< 0 when the device reports none
    double altitudeAngle = 0; ///< radians above the surface, pi / 2 upright
    double azimuthAngle = 0;  ///< radians, the direction in which a tilted stylus points
};

/// One sample of a recorded stroke.
struct StrokePoint {
    double x = 0;
    double y = 0;
    double time = 0; ///< seconds
};

} // namespace norvane
