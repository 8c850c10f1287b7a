#pragma once

#include <norvane/signature/Image.h>

#include <optional>

namespace norvane {

/// What counts as background when an image is cropped to its ink: exactly white pixels, whatever their alpha,
/// or fully transparent ones.
enum class NVMCropMode { White = 0, Transparent = 1 };

/// Cuts out the smallest rectangle that holds all ink, without padding, at the image's own scale. Nothing
/// when there is no ink at all.
std::optional<Image> nvm_imageWithCropping(const Image& image, NVMCropMode mode);
std::optional<Image> nvm_imageWithWhiteCropped(const Image& image);
std::optional<Image> nvm_imageWithTransparentCropped(const Image& image);

/// Makes every pixel whose red, green and blue all lie from `whiteLevel` to 255 transparent, and every other
/// pixel black with the alpha it had.
Image nvm_imageMaskedWithWhiteLevel(const Image& image, int whiteLevel);

/// Fits the image into the size (points) without enlarging it and places it, centred, on a transparent image
/// of exactly that size. The null image when the size passes the bounds of an image.
Image nvm_imageCroppedToSize(const Image& image, Size size);

/// Stretches the image to the size (points), at its own scale and to whole pixels, at least one each way.
Image resizedImageToSize(const Image& image, Size size);
/// Scales the image to fit inside the size (points), keeping its aspect ratio. An image that fits already is
/// returned as it is unless `scaleIfSmaller`.
Image resizedImageToFitInSize(const Image& image, Size size, bool scaleIfSmaller);

} // namespace norvane
