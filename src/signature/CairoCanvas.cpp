#include "src/signature/CairoCanvas.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace norvane {
namespace {

int pixelsOf(double points, double scale) {
    const double pixels = std::round(points * scale);
    if (!(pixels >= 1)) return 1;
    return static_cast<int>(std::min(pixels, Image::kMaximumSide + 1.0));
}

std::uint32_t premultiplied(const std::uint8_t* rgba) {
    const std::uint32_t alpha = rgba[3];
    const auto multiply = [alpha](std::uint32_t component) { return (component * alpha + 127) / 255; };
    return alpha << 24 | multiply(rgba[0]) << 16 | multiply(rgba[1]) << 8 | multiply(rgba[2]);
}

void writeStraight(std::uint32_t argb, std::uint8_t* rgba) {
    const std::uint32_t alpha = argb >> 24;
    const auto divide = [alpha](std::uint32_t component) {
        if (alpha == 0) return std::uint8_t{0};
        return static_cast<std::uint8_t>(std::min<std::uint32_t>(255, (component * 255 + alpha / 2) / alpha));
    };
    rgba[0] = divide(argb >> 16 & 0xFF);
    rgba[1] = divide(argb >> 8 & 0xFF);
    rgba[2] = divide(argb & 0xFF);
    rgba[3] = static_cast<std::uint8_t>(alpha);
}

} // namespace

CairoCanvas::Surface CairoCanvas::makeSurface(int width, int height) {
    const bool isAllowed = width <= Image::kMaximumSide && height <= Image::kMaximumSide &&
                           std::int64_t{width} * height <= Image::kMaximumPixels;
    return Surface(
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, isAllowed ? width : -1, isAllowed ? height : -1));
}

CairoCanvas::Surface CairoCanvas::surfaceOf(const Image& image) {
    Surface surface = makeSurface(image.width(), image.height());
    std::uint8_t* target = cairo_image_surface_get_data(surface.get());
    if (!target) return surface;
    cairo_surface_flush(surface.get());
    const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface.get()));
    for (int y = 0; y < image.height(); ++y, target += stride) {
        const std::uint8_t* source = image.row(y);
        for (std::size_t x = 0; x < static_cast<std::size_t>(image.width()); ++x) {
            const std::uint32_t pixel = premultiplied(source + x * 4);
            std::memcpy(target + x * 4, &pixel, sizeof pixel);
        }
    }
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

CairoCanvas::CairoCanvas(Size points, double scale)
    : scale_(scale)
    , surface_(makeSurface(pixelsOf(points.width, scale), pixelsOf(points.height, scale)))
    , context_(cairo_create(surface_.get())) {
    cairo_scale(context_.get(), scale, scale);
}

bool CairoCanvas::isUsable() const { return cairo_status(context_.get()) == CAIRO_STATUS_SUCCESS; }

Size CairoCanvas::size() const {
    return {cairo_image_surface_get_width(surface_.get()) / scale_,
            cairo_image_surface_get_height(surface_.get()) / scale_};
}

void CairoCanvas::setColor(const Color& color) {
    cairo_set_source_rgba(context_.get(), color.red, color.green, color.blue, color.alpha);
}

void CairoCanvas::drawImage(const Image& image, const Rect& rectangle) {
    if (image.isNull() || !isUsable()) return;
    const Surface source = surfaceOf(image);
    cairo_t* context = context_.get();
    cairo_save(context);
    cairo_translate(context, rectangle.x, rectangle.y);
    cairo_scale(context, rectangle.width / image.width(), rectangle.height / image.height());
    cairo_set_source_surface(context, source.get(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_GOOD);
    // Pixels beyond the border repeat it; without that the edges of a scaled image would fade.
    cairo_pattern_set_extend(cairo_get_source(context), CAIRO_EXTEND_PAD);
    cairo_rectangle(context, 0, 0, image.width(), image.height());
    cairo_fill(context);
    cairo_restore(context);
}

Image CairoCanvas::image() const {
    if (!isUsable()) return {};
    cairo_surface_flush(surface_.get());
    const std::uint8_t* source = cairo_image_surface_get_data(surface_.get());
    const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface_.get()));
    const int width = cairo_image_surface_get_width(surface_.get());
    const int height = cairo_image_surface_get_height(surface_.get());
    return Image::generate(width, height, scale_, [&](std::uint8_t* pixels) {
        for (int y = 0; y < height; ++y, source += stride) {
            for (std::size_t x = 0; x < static_cast<std::size_t>(width); ++x, pixels += 4) {
                std::uint32_t pixel = 0;
                std::memcpy(&pixel, source + x * 4, sizeof pixel);
                writeStraight(pixel, pixels);
            }
        }
    });
}

} // namespace norvane
