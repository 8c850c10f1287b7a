#pragma once

#include <norvane/model/NVMTabType.h>
#include <norvane/platform/Geometry.h>
#include <norvane/signature/Image.h>

namespace norvane {

/// What the look of an empty field depends on; lengths in points.
struct TabLook {
    Size size;
    Rect frame; ///< within the size, so that strokes along it are not cut
    double strokeWidth = 1;
    double highlightWidth = 1;
    bool isEditable = false;
    bool isRequired = false;
    bool isHighlighted = false;
    bool isErroneous = false;
    bool isChecked = false;
};

/// The look of a tab without an image: sign here, initial here, check box or radio button; an empty image of
/// that size for other types. Equal looks share one buffer. Any thread.
Image tabLook(NVMTagType type, const TabLook& look, double scale);

} // namespace norvane
