#include "src/signature/CairoCanvas.h"
#include "src/signature/StrokeDrawing.h"

#include <norvane/signature/NVMSignatureDrawView.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace norvane {
namespace {

constexpr std::size_t kSpeedCount = 8;
constexpr double kInitialSpeed = 3.75;
constexpr double kSecondsPerFrame = 1.0 / 60;
constexpr double kTiltThreshold = 0.6283185307179586; // 36 degrees
constexpr double kFlattestAltitude = 0.25;
constexpr double kFarthestCoordinate = 100'000;

bool isUsable(const Point& point) {
    return std::abs(point.x) <= kFarthestCoordinate && std::abs(point.y) <= kFarthestCoordinate;
}

Point locationOf(const Touch& touch) { return touch.preciseLocation.value_or(touch.location); }
Point previousLocationOf(const Touch& touch) {
    return touch.precisePreviousLocation.value_or(touch.previousLocation);
}

bool isUsable(const Touch& touch) {
    return isUsable(locationOf(touch)) && isUsable(previousLocationOf(touch)) && std::isfinite(touch.force) &&
           std::isfinite(touch.altitudeAngle) && std::isfinite(touch.azimuthAngle);
}

Point midpoint(const Point& a, const Point& b) { return {(a.x + b.x) / 2, (a.y + b.y) / 2}; }

Rect boundsOf(const QuadraticCurve& curve) {
    const auto [left, right] = std::minmax({curve.from.x, curve.control.x, curve.to.x});
    const auto [top, bottom] = std::minmax({curve.from.y, curve.control.y, curve.to.y});
    return {left, top, right - left, bottom - top};
}

} // namespace

NVMSignatureDrawView::NVMSignatureDrawView(Size bounds, double displayScale)
    : bounds_(bounds)
    , displayScale_(displayScale)
    , touchSpeeds_(kSpeedCount, kInitialSpeed) {}

void NVMSignatureDrawView::setBounds(Size bounds) {
    bounds_ = bounds;
    needsDisplay({0, 0, bounds.width, bounds.height});
}

void NVMSignatureDrawView::touchesBegan(const Touch& touch) {
    if (!isUsable(touch)) return;
    previousPoint1_ = previousPoint2_ = previousLocationOf(touch);
    currentPoint_ = locationOf(touch);
    currentPath_ = defaultDrawingBezierPath();
    currentPath_->lineWidth = calculateLineWidthForTouch(touch);
    currentPath_->start = currentPoint_;
    renderTouchToScreen(touch);
}

void NVMSignatureDrawView::touchesMoved(const Touch& touch) {
    if (!isUsable(touch) || !currentPath_) return;
    recordSpeed(touch);
    renderTouchToScreen(touch);
}

void NVMSignatureDrawView::touchesEnded(const Touch& touch) {
    if (!currentPath_) return;
    commitCurrentPath();
    // The last piece joins the stroke after the commit, on the path that the list already holds.
    if (!isPencil(touch) && isUsable(touch)) renderTouchToScreen(touch);
    currentPath_ = nullptr;
}

void NVMSignatureDrawView::drawStroke(const std::vector<StrokePoint>& points) {
    Touch touch;
    for (std::size_t i = 0; i < points.size(); ++i) {
        touch.previousLocation = i == 0 ? Point{points[0].x, points[0].y} : touch.location;
        touch.location = {points[i].x, points[i].y};
        touch.time = points[i].time;
        if (i == 0)
            touchesBegan(touch);
        else if (i + 1 < points.size())
            touchesMoved(touch);
    }
    if (!points.empty()) touchesEnded(touch);
}

void NVMSignatureDrawView::renderTouchToScreen(const Touch& touch) {
    previousPoint2_ = previousPoint1_;
    previousPoint1_ = previousLocationOf(touch);
    currentPoint_ = locationOf(touch);
    const double width = calculateLineWidthForTouch(touch);
    const QuadraticCurve curve{midpoint(previousPoint1_, previousPoint2_), previousPoint1_,
                               midpoint(currentPoint_, previousPoint1_), width};
    currentPath_->curves.push_back(curve);
    lastTouch_ = touch;
    setEmpty(false);

    const Rect box = boundsOf(curve);
    needsDisplay({box.x - 2 * width, box.y - 2 * width, box.width + 4 * width, box.height + 4 * width});
}

std::shared_ptr<StrokePath> NVMSignatureDrawView::defaultDrawingBezierPath() const {
    auto path = std::make_shared<StrokePath>();
    path->lineWidth = lineWidth;
    return path;
}

void NVMSignatureDrawView::commitCurrentPath() { paths_.push_back({currentPath_, lineColor}); }

void NVMSignatureDrawView::recordSpeed(const Touch& touch) {
    const double seconds = lastTouch_ ? touch.time - lastTouch_->time : 0;
    if (!(seconds > 0)) return;
    const Point from = previousLocationOf(touch);
    const Point to = locationOf(touch);
    touchSpeeds_.push_back(std::hypot(to.x - from.x, to.y - from.y) / seconds * kSecondsPerFrame);
    if (touchSpeeds_.size() > kSpeedCount) touchSpeeds_.pop_front();
}

double NVMSignatureDrawView::calculateLineWidthForTouch(const Touch& touch) const {
    return pencilSupportEnabled_ ? pencilLineWidthForTouch(touch) : lineWidth;
}

double NVMSignatureDrawView::pencilLineWidthForTouch(const Touch& touch) const {
    if (!isPencil(touch)) return lineWidth;
    return pencilTiltingSupportEnabled_ && touch.altitudeAngle < kTiltThreshold
               ? pencilLineWidthForShadingWithTouch(touch)
               : pencilLineWidthForDrawingWithTouch(touch);
}

double NVMSignatureDrawView::pencilLineWidthForShadingWithTouch(const Touch& touch) const {
    constexpr double pi = std::numbers::pi;
    const double direction =
        std::atan2(currentPoint_.y - previousPoint1_.y, currentPoint_.x - previousPoint1_.x);
    double angle = std::fmod(std::abs(direction - touch.azimuthAngle), 2 * pi);
    if (angle > pi) angle = 2 * pi - angle;
    if (angle > pi / 2) angle = pi - angle;
    const double altitude = std::max(0.0, touch.altitudeAngle - kFlattestAltitude);
    return std::max(6.0, 10 * (angle / (pi / 2)) * (1 + altitude / (kFlattestAltitude - kTiltThreshold)));
}

double NVMSignatureDrawView::pencilLineWidthForDrawingWithTouch(const Touch& touch) const {
    // Deliberately without the base line width where the stylus reports a force.
    return touch.force > 0 ? touch.force + 2 : lineWidth + 1;
}

Image NVMSignatureDrawView::drawRect(const Rect& part) {
    if (clearOnRedraw) currentImage_ = Image();
    clearOnRedraw = false;
    CairoCanvas canvas({part.width, part.height}, displayScale_);
    cairo_translate(canvas.context(), -part.x, -part.y);
    drawSurface(canvas, bounds_, currentImage_, paths_);
    if (currentPath_) strokePath(canvas, *currentPath_, lineColor);
    return canvas.image();
}

std::optional<Image> NVMSignatureDrawView::getImage() const {
    if (isEmpty_) return std::nullopt;
    CairoCanvas canvas(bounds_, displayScale_);
    drawSurface(canvas, bounds_, currentImage_, paths_);
    Image image = canvas.image();
    if (image.isNull()) return std::nullopt;
    return image;
}

void NVMSignatureDrawView::setImage(const Image& image) {
    clear();
    currentImage_ = image;
    clearOnRedraw = false;
    if (!image.isNull()) setEmpty(false);
}

void NVMSignatureDrawView::clear() {
    // Deliberately kept: a first stroke that is still being drawn survives.
    if (!paths_.empty()) currentPath_ = nullptr;
    paths_.clear();
    currentImage_ = Image();
    setEmpty(true);
    needsDisplay({0, 0, bounds_.width, bounds_.height});
}

void NVMSignatureDrawView::setEmpty(bool isEmpty) {
    if (isEmpty_ == isEmpty) return;
    isEmpty_ = isEmpty;
    if (onEmptyChanged) onEmptyChanged(isEmpty);
}

void NVMSignatureDrawView::needsDisplay(const Rect& part) const {
    if (onNeedsDisplay) onNeedsDisplay(part);
}

} // namespace norvane
