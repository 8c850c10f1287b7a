#pragma once

#include <norvane/platform/Data.h>
#include <norvane/platform/Geometry.h>
#include <norvane/platform/Result.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

namespace norvane {

/// Domain of image errors; the code is an `ImageErrorCode`.
inline constexpr std::string_view kImageErrorDomain = "NorvaneImageErrorDomain";
enum class ImageErrorCode { NotPng = 1, TooLarge = 2, Damaged = 3 };

/// A bitmap: rows from top to bottom, four bytes a pixel (red, green, blue, alpha not multiplied in). A
/// value, cheap to copy: copies and large regions share one immutable buffer. Safe to read from several
/// threads.
class Image {
  public:
    static constexpr int kMaximumSide = 32'767;
    static constexpr std::int64_t kMaximumPixels = 100'000'000;

    /// The null image: no pixels, size 0 x 0.
    Image() = default;
    /// An image whose tight rows (4 * width bytes each) `fill` writes, every byte of them. The null image
    /// when a dimension is not positive or a bound above is passed; `fill` does not run then.
    static Image generate(int width, int height, double scale,
                          const std::function<void(std::uint8_t* pixels)>& fill);
    /// Copies tight rows.
    static Image fromPixels(int width, int height, const std::uint8_t* rgba, double scale = 1);
    /// Decodes a PNG of any kind to eight bits a channel. What claims more pixels than the bounds above, or
    /// more than its bytes can hold, is refused before memory is taken.
    static Result<Image> decodePng(const Data& png, double scale = 1);

    bool isNull() const { return width_ == 0; }
    int width() const { return width_; } ///< pixels
    int height() const { return height_; }
    double scale() const { return scale_; }                           ///< pixels a point
    Size size() const { return {width_ / scale_, height_ / scale_}; } ///< points
    const std::uint8_t* row(int y) const { return origin_ + static_cast<std::size_t>(y) * stride_; }
    std::size_t bytesPerRow() const { return stride_; } ///< from one row to the next; may exceed 4 * width

    /// The part of the image inside the rectangle of pixels, which must lie within the image. A large part
    /// shares the buffer; a small one is copied, so that a crop never keeps a photo alive.
    Image region(int x, int y, int width, int height) const;
    Image withScale(double scale) const;
    /// The same bytes as PNG, unfiltered rows at level 9, which suits drawn ink best.
    Data pngData() const;

    /// The buffer itself, for telling that two images share one.
    const std::shared_ptr<const std::uint8_t[]>& buffer() const { return buffer_; }
    /// Same dimensions and same bytes; the scale is not compared.
    friend bool operator==(const Image& a, const Image& b);

  private:
    std::shared_ptr<const std::uint8_t[]> buffer_;
    const std::uint8_t* origin_ = nullptr;
    std::size_t stride_ = 0;
    int width_ = 0;
    int height_ = 0;
    double scale_ = 1;
};

} // namespace norvane
