#pragma once

#include <norvane/pdf/PdfAnnotation.h>
#include <norvane/platform/Geometry.h>

#include <cstddef>
#include <memory>
#include <optional>

namespace norvane {

/// A page of a document: a light handle, which keeps the document alive. Positions count from the bottom-left
/// corner of the media box, wherever the file puts that corner; the page's rotation is not applied.
class PdfPage {
  public:
    /// From 1, as the document stands now.
    std::size_t number() const;
    /// Width and height of the media box; US letter where the file gives no usable box.
    Size size() const;

    /// A new annotation of this page, to be shown by `pushFront`.
    PdfAnnotation createFreeText(const PdfRect& rect) const;
    /// `icon` is the index of a standard stamp name; any number beyond them, as 14, stands for none of them.
    PdfAnnotation createRubberStamp(const PdfRect& rect, int icon = 14) const;
    /// Makes the annotation the first of the page's list, beneath all others. No effect when it is there.
    void pushFront(const PdfAnnotation& annotation) const;
    /// The topmost annotation within `distance` points of the point (y upwards), the thinner side of each
    /// counting as at least `minimumLineWeight` points. Nothing when there is none.
    std::optional<PdfAnnotation> annotationAt(const Point& point, double distance = 0,
                                              double minimumLineWeight = 0) const;

    struct State;
    explicit PdfPage(std::shared_ptr<const State> state)
        : state_(std::move(state)) {}

  private:
    std::shared_ptr<const State> state_;
};

} // namespace norvane
