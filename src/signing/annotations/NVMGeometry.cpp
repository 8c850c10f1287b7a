#include <norvane/platform/Platform.h>
#include <norvane/signing/NVMGeometry.h>

#include <cmath>

namespace norvane {

double NVMGeometry::roundFloat(double length) { return roundFloat(length, Platform::current().displayScale); }

double NVMGeometry::roundFloat(double length, double displayScale) {
    return std::round(length * displayScale) / displayScale;
}

} // namespace norvane
