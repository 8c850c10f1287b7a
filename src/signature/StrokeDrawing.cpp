#include "src/signature/StrokeDrawing.h"

#include <algorithm>
#include <numbers>

namespace norvane {
namespace {

/// Cairo knows curves with two control points only.
void appendCurve(cairo_t* context, const QuadraticCurve& curve) {
    const auto towardsControl = [&](const Point& end) {
        return Point{end.x + (curve.control.x - end.x) * 2 / 3, end.y + (curve.control.y - end.y) * 2 / 3};
    };
    const Point first = towardsControl(curve.from);
    const Point second = towardsControl(curve.to);
    cairo_line_to(context, curve.from.x, curve.from.y);
    cairo_curve_to(context, first.x, first.y, second.x, second.y, curve.to.x, curve.to.y);
}

} // namespace

void strokePath(CairoCanvas& canvas, const StrokePath& path, const Color& color) {
    cairo_t* context = canvas.context();
    canvas.setColor(color);
    cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);

    double width = path.lineWidth;
    cairo_new_path(context);
    cairo_arc(context, path.start.x, path.start.y, StrokePath::kDotRadius, 0, 2 * std::numbers::pi);
    cairo_close_path(context);
    cairo_new_sub_path(context);
    for (const QuadraticCurve& curve : path.curves) {
        if (curve.lineWidth != width) {
            cairo_set_line_width(context, width);
            cairo_stroke(context);
            width = curve.lineWidth;
        }
        appendCurve(context, curve);
    }
    cairo_set_line_width(context, width);
    cairo_stroke(context);
}

void drawSurface(CairoCanvas& canvas, Size bounds, const Image& image,
                 const std::vector<NVMSignatureDrawView::CommittedPath>& paths) {
    canvas.setColor({1, 1, 1, 1});
    cairo_paint(canvas.context());
    if (!image.isNull()) {
        const Size size = image.size();
        const double factor = std::min(bounds.width / size.width, bounds.height / size.height);
        const Size fitted{size.width * factor, size.height * factor};
        canvas.drawImage(image, {(bounds.width - fitted.width) / 2, (bounds.height - fitted.height) / 2,
                                 fitted.width, fitted.height});
    }
    for (const auto& path : paths)
        strokePath(canvas, *path.bezierPath, path.selectedLineColor);
}

} // namespace norvane
