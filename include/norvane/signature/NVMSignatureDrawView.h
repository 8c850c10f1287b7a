#pragma once

#include <norvane/signature/Image.h>
#include <norvane/signature/StrokePath.h>
#include <norvane/signature/Touch.h>

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace norvane {

/// The surface on which a signature is drawn: turns touches into smooth strokes and strokes into an image. It
/// has no window: a view forwards touches, and repaints what `onNeedsDisplay` names with `drawRect` or from
/// the paths. Main thread only. Touches at positions that are no finite numbers, or more than 100,000 points
/// away, are ignored.
class NVMSignatureDrawView {
  public:
    /// A stroke once finished; it keeps its colour when `lineColor` changes.
    struct CommittedPath {
        std::shared_ptr<const StrokePath> bezierPath;
        Color selectedLineColor;
    };

    /// The surface's size in points and the pixels a point of the images that it gives.
    explicit NVMSignatureDrawView(Size bounds, double displayScale = 2);

    Size bounds() const { return bounds_; }
    void setBounds(Size bounds);

    Color lineColor;
    double lineWidth = 6.0; ///< points
    /// When set, the next drawing starts from plain white, without the image of `setImage`, and unsets it.
    bool clearOnRedraw = false;

    void enablePencilSupport(bool enabled) { pencilSupportEnabled_ = enabled; }
    void enablePencilTiltingSupport(bool enabled) { pencilTiltingSupportEnabled_ = enabled; }
    bool pencilSupportEnabled() const { return pencilSupportEnabled_; }
    bool pencilTiltingSupportEnabled() const { return pencilTiltingSupportEnabled_; }

    /// True until the first touch and again after `clear`.
    bool isEmpty() const { return isEmpty_; }
    /// Called after each change of `isEmpty`, with the new value.
    std::function<void(bool isEmpty)> onEmptyChanged;
    /// Called with the part of the surface to paint anew.
    std::function<void(const Rect&)> onNeedsDisplay;

    void touchesBegan(const Touch& touch);
    void touchesMoved(const Touch& touch);
    void touchesEnded(const Touch& touch);
    /// Draws a recorded finger stroke: its first point as a touch that begins, its last as one that ends.
    void drawStroke(const std::vector<StrokePoint>& points);

    const std::vector<CommittedPath>& paths() const { return paths_; }
    /// The stroke being drawn, or null.
    const StrokePath* currentPath() const { return currentPath_.get(); }
    const std::optional<Touch>& lastTouch() const { return lastTouch_; }
    /// The last eight speeds, oldest first, in points for a sixtieth of a second.
    const std::deque<double>& touchSpeeds() const { return touchSpeeds_; }

    static bool isPencil(const Touch& touch) { return touch.type == TouchType::Stylus; }
    /// The width that the touch gives to the piece of the stroke that ends at it.
    double calculateLineWidthForTouch(const Touch& touch) const;
    double pencilLineWidthForTouch(const Touch& touch) const;
    double pencilLineWidthForShadingWithTouch(const Touch& touch) const;
    double pencilLineWidthForDrawingWithTouch(const Touch& touch) const;

    /// The part of the surface as it looks now: white, the image set, all strokes, the current one last.
    Image drawRect(const Rect& part);
    /// All finished strokes on white, or nothing while the surface is empty.
    std::optional<Image> getImage() const;
    /// Replaces everything drawn by an image, fitted into the bounds; the null image clears.
    void setImage(const Image& image);
    void clear();

  private:
    void renderTouchToScreen(const Touch& touch);
    std::shared_ptr<StrokePath> defaultDrawingBezierPath() const;
    void commitCurrentPath();
    void recordSpeed(const Touch& touch);
    void setEmpty(bool isEmpty);
    void needsDisplay(const Rect& part) const;

    Size bounds_;
    double displayScale_;
    bool pencilSupportEnabled_ = false;
    bool pencilTiltingSupportEnabled_ = false;
    bool isEmpty_ = true;
    std::vector<CommittedPath> paths_;
    std::shared_ptr<StrokePath> currentPath_;
    Point currentPoint_;
    Point previousPoint1_;
    Point previousPoint2_;
    std::deque<double> touchSpeeds_;
    std::optional<Touch> lastTouch_;
    Image currentImage_;
};

} // namespace norvane
