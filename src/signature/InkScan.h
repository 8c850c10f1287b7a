#pragma once

#include <norvane/signature/NVMSignatureCleanup.h>

#include <optional>

namespace norvane {

/// A rectangle of whole pixels, not empty.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// The smallest rectangle that holds every ink pixel, or nothing when there is none. Reads each byte once at
/// most: whole rows from the top and from the bottom, then the sides inside the band that is left.
std::optional<PixelRect> inkBounds(const Image& image, NVMCropMode mode);

} // namespace norvane
