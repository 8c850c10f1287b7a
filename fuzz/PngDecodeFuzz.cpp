#include <norvane/signature/Image.h>
#include <norvane/signature/NVMSignatureCleanup.h>

#include <cstdlib>

using namespace norvane;

namespace {

void require(bool condition) {
    if (!condition) std::abort();
}

constexpr std::int64_t kQuickPixels = 250'000;

} // namespace

/// Any bytes decode to an image that can be cleaned up and encoded again, or end in the image's own error.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const auto image = Image::decodePng(Data(bytes, size));
    if (!image) {
        require(image.error().domain == kImageErrorDomain);
        return 0;
    }
    require(image->width() > 0 && image->width() <= Image::kMaximumSide);
    require(image->height() > 0 && image->height() <= Image::kMaximumSide);
    if (std::int64_t{image->width()} * image->height() > kQuickPixels) return 0;

    const Image masked = nvm_imageMaskedWithWhiteLevel(*image, 128);
    if (const auto cropped = nvm_imageWithTransparentCropped(masked)) {
        require(cropped->width() <= image->width() && cropped->height() <= image->height());
        require(nvm_imageWithTransparentCropped(*cropped) == cropped);
    }
    require(nvm_imageCroppedToSize(*image, {60, 40}).width() == 60);
    const auto again = Image::decodePng(image->pngData());
    require(again && *again == *image);
    return 0;
}
