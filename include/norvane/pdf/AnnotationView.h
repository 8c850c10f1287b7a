#pragma once

#include <norvane/pdf/PdfAnnotation.h>

#include <cstddef>

namespace norvane {

/// The viewer as the annotations see it; the host's view implements it. Called on the main thread, without
/// any lock of the document held.
class AnnotationView {
  public:
    virtual ~AnnotationView() = default;
    /// The annotation looks different now: redraw it, not the page.
    virtual void updateAnnotation(const PdfAnnotation& annotation, std::size_t pageNumber) = 0;
};

} // namespace norvane
