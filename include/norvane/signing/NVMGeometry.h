#pragma once

namespace norvane {

class NVMGeometry {
  public:
    NVMGeometry() = delete;
    /// The length (points) rounded to whole pixels of the platform's display.
    static double roundFloat(double length);
    /// The same for a display of that many pixels a point.
    static double roundFloat(double length, double displayScale);
};

} // namespace norvane
