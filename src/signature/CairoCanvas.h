#pragma once

#include <norvane/signature/Image.h>

#include <cairo.h>

#include <memory>

namespace norvane {

/// A transparent bitmap to draw on with cairo, in points, y downwards.
class CairoCanvas {
  public:
    /// The size is rounded to whole pixels, at least one each way.
    CairoCanvas(Size points, double scale);

    /// False when the size passes the bounds of an image; drawing has no effect then.
    bool isUsable() const;
    Size size() const; ///< points, after rounding; 0 x 0 when not usable
    cairo_t* context() { return context_.get(); }
    void setColor(const Color& color);
    /// Draws the image stretched to the rectangle, filtered well in both directions.
    void drawImage(const Image& image, const Rect& rectangle);
    /// What was drawn, or the null image.
    Image image() const;

  private:
    struct SurfaceDeleter {
        void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    };
    struct ContextDeleter {
        void operator()(cairo_t* context) const { cairo_destroy(context); }
    };
    using Surface = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;

    static Surface makeSurface(int width, int height);
    static Surface surfaceOf(const Image& image);

    double scale_;
    Surface surface_;
    std::unique_ptr<cairo_t, ContextDeleter> context_;
};

} // namespace norvane
