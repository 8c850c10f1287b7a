#include <norvane/signature/Image.h>

#include <cmath>
#include <cstring>

namespace norvane {
namespace {

bool isWithinBounds(int width, int height) {
    return width > 0 && height > 0 && width <= Image::kMaximumSide && height <= Image::kMaximumSide &&
           std::int64_t{width} * height <= Image::kMaximumPixels;
}

double usableScale(double scale) { return std::isfinite(scale) && scale > 0 ? scale : 1; }

} // namespace

Image Image::generate(int width, int height, double scale,
                      const std::function<void(std::uint8_t* pixels)>& fill) {
    Image image;
    if (!isWithinBounds(width, height)) return image;
    image.stride_ = static_cast<std::size_t>(width) * 4;
    auto pixels =
        std::make_shared_for_overwrite<std::uint8_t[]>(image.stride_ * static_cast<std::size_t>(height));
    fill(pixels.get());
    image.buffer_ = std::move(pixels);
    image.origin_ = image.buffer_.get();
    image.width_ = width;
    image.height_ = height;
    image.scale_ = usableScale(scale);
    return image;
}

Image Image::fromPixels(int width, int height, const std::uint8_t* rgba, double scale) {
    return generate(width, height, scale, [&](std::uint8_t* pixels) {
        std::memcpy(pixels, rgba, static_cast<std::size_t>(width) * 4 * static_cast<std::size_t>(height));
    });
}

Image Image::region(int x, int y, int width, int height) const {
    Image part = *this;
    part.origin_ = row(y) + static_cast<std::size_t>(x) * 4;
    part.width_ = width;
    part.height_ = height;
    // Sharing wastes at most seven times the part; copying an eighth costs little beside having found it.
    constexpr int kLargestShareCopied = 8;
    const std::size_t partBytes = static_cast<std::size_t>(width) * 4 * static_cast<std::size_t>(height);
    if (partBytes * kLargestShareCopied >= stride_ * static_cast<std::size_t>(height_)) return part;
    return generate(width, height, scale_, [&](std::uint8_t* pixels) {
        const std::size_t rowBytes = static_cast<std::size_t>(width) * 4;
        for (int line = 0; line < height; ++line, pixels += rowBytes)
            std::memcpy(pixels, part.row(line), rowBytes);
    });
}

Image Image::withScale(double scale) const {
    Image image = *this;
    image.scale_ = usableScale(scale);
    return image;
}

bool operator==(const Image& a, const Image& b) {
    if (a.width_ != b.width_ || a.height_ != b.height_) return false;
    if (a.origin_ == b.origin_ && a.stride_ == b.stride_) return true;
    for (int y = 0; y < a.height_; ++y)
        if (std::memcmp(a.row(y), b.row(y), static_cast<std::size_t>(a.width_) * 4) != 0) return false;
    return true;
}

} // namespace norvane
