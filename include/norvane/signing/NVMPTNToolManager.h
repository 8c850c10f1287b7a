#pragma once

#include <norvane/pdf/PdfDocument.h>
#include <norvane/signing/NVMPTNPDFAnnotationManager.h>

#include <cstddef>
#include <memory>

namespace norvane {

/// Hears of taps on the signing view; every callback may be left out. Points are the screen's, as given to
/// `handleTap`. Main thread.
class NVMPTNToolManagerDelegate {
  public:
    using Annotation = std::shared_ptr<NVMPDFBaseAnnotation>;

    virtual ~NVMPTNToolManagerDelegate() = default;
    virtual void pdfViewControllerDidTapOnTextAnnotation(const Annotation&, const Point&) {}
    virtual void pdfViewControllerDidTapOnImageAnnotation(const Annotation&, const Point&) {}
    /// After one of the two above, for editable annotations only.
    virtual void pdfViewControllerDidTapOnAnnotation(const Annotation&, const Point&) {}
    /// A page was tapped where no tab is.
    virtual void pdfViewControllerDidTapOnPageView(const Point&) {}
};

/// The tap handler of the signing view: finds out which tab was meant. Main thread only.
class NVMPTNToolManager {
  public:
    /// How near a tap must come to an annotation, and how thick the thinnest counts, in points.
    static constexpr double kTapDistance = 4;
    static constexpr double kMinimumLineWeight = 4;

    /// The delegate is held weakly, the annotation manager must outlive this object.
    NVMPTNToolManager(std::shared_ptr<PdfDocument> document,
                      std::weak_ptr<NVMPTNToolManagerDelegate> delegate,
                      const NVMPTNPDFAnnotationManager& annotationManager)
        : document_(std::move(document))
        , delegate_(std::move(delegate))
        , annotationManager_(annotationManager) {}

    /// A tap on the page with that number, from 1, at a point of the page (y upwards). Without such a page
    /// the tap missed all of them, and nothing happens. The viewer's own tap handling has run before.
    void handleTap(std::size_t pageNumber, const Point& pagePoint, const Point& screenPoint) const;
    /// Ignored: always false.
    bool handleLongPress() const { return false; }
    /// The kit's annotation for one of the engine's; null when it is not registered.
    std::shared_ptr<NVMPDFBaseAnnotation> getBaseAnnotation(const PdfAnnotation& annotation) const;

  private:
    void handleTapOnAnnotation(const std::shared_ptr<NVMPDFBaseAnnotation>& annotation,
                               const Point& point) const;

    std::shared_ptr<PdfDocument> document_;
    std::weak_ptr<NVMPTNToolManagerDelegate> delegate_;
    const NVMPTNPDFAnnotationManager& annotationManager_;
};

} // namespace norvane
