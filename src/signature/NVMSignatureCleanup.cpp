#include "src/signature/CairoCanvas.h"
#include "src/signature/InkScan.h"

#include <norvane/signature/NVMSignatureCleanup.h>

#include <algorithm>
#include <cmath>

namespace norvane {

std::optional<Image> nvm_imageWithCropping(const Image& image, NVMCropMode mode) {
    const auto bounds = inkBounds(image, mode);
    if (!bounds) return std::nullopt;
    const Image cut = image.region(bounds->x, bounds->y, bounds->width, bounds->height);
    return resizedImageToFitInSize(cut, image.size(), false);
}

std::optional<Image> nvm_imageWithWhiteCropped(const Image& image) {
    return nvm_imageWithCropping(image, NVMCropMode::White);
}

std::optional<Image> nvm_imageWithTransparentCropped(const Image& image) {
    return nvm_imageWithCropping(image, NVMCropMode::Transparent);
}

Image nvm_imageMaskedWithWhiteLevel(const Image& image, int whiteLevel) {
    return Image::generate(image.width(), image.height(), image.scale(), [&](std::uint8_t* pixels) {
        for (int y = 0; y < image.height(); ++y) {
            const std::uint8_t* source = image.row(y);
            for (int x = 0; x < image.width(); ++x, source += 4, pixels += 4) {
                const bool isBackground = std::min({source[0], source[1], source[2]}) >= whiteLevel;
                pixels[0] = pixels[1] = pixels[2] = 0;
                pixels[3] = isBackground ? std::uint8_t{0} : source[3];
            }
        }
    });
}

Image nvm_imageCroppedToSize(const Image& image, Size size) {
    CairoCanvas canvas(size, image.scale());
    if (image.isNull() || !canvas.isUsable()) return {};
    const Image fitted = resizedImageToFitInSize(image, size, false);
    const Size placed = fitted.size();
    const double widthAtFullHeight = std::round(placed.width * size.height / placed.height);
    // A negative offset belongs to an image as wide as the region already: it would only push ink out.
    const double x = std::max(0.0, std::round((size.width - widthAtFullHeight) * 0.5));
    const double y = std::max(0.0, std::round((size.height - placed.height) * 0.5));
    canvas.drawImage(fitted, {x, y, placed.width, placed.height});
    return canvas.image();
}

Image resizedImageToSize(const Image& image, Size size) {
    if (image.isNull()) return {};
    CairoCanvas canvas(size, image.scale());
    const Size target = canvas.size();
    if (target == image.size()) return image;
    canvas.drawImage(image, {0, 0, target.width, target.height});
    return canvas.image();
}

Image resizedImageToFitInSize(const Image& image, Size size, bool scaleIfSmaller) {
    if (image.isNull()) return {};
    const Size own = image.size();
    if (!scaleIfSmaller && own.width <= size.width && own.height <= size.height) return image;
    const double factor = std::min(size.width / own.width, size.height / own.height);
    return resizedImageToSize(image, {own.width * factor, own.height * factor});
}

} // namespace norvane
