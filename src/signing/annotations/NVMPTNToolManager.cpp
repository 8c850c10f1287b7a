#include <norvane/signing/NVMPTNToolManager.h>

namespace norvane {

void NVMPTNToolManager::handleTap(std::size_t pageNumber, const Point& pagePoint,
                                  const Point& screenPoint) const {
    const auto page = document_->page(pageNumber);
    if (!page) return;
    const auto found = page->annotationAt(pagePoint, kTapDistance, kMinimumLineWeight);
    if (const auto annotation = found ? getBaseAnnotation(*found) : nullptr)
        handleTapOnAnnotation(annotation, screenPoint);
    else if (const auto delegate = delegate_.lock())
        delegate->pdfViewControllerDidTapOnPageView(screenPoint);
}

std::shared_ptr<NVMPDFBaseAnnotation>
NVMPTNToolManager::getBaseAnnotation(const PdfAnnotation& annotation) const {
    const std::string uniqueId = annotation.uniqueId();
    return uniqueId.empty() ? nullptr : annotationManager_.pdfAnnotationWithUniqueId(uniqueId);
}

void NVMPTNToolManager::handleTapOnAnnotation(const std::shared_ptr<NVMPDFBaseAnnotation>& annotation,
                                              const Point& point) const {
    const auto delegate = delegate_.lock();
    if (!delegate) return;
    if (annotation->isTextBased()) delegate->pdfViewControllerDidTapOnTextAnnotation(annotation, point);
    if (annotation->isImageBased()) delegate->pdfViewControllerDidTapOnImageAnnotation(annotation, point);
    if (annotation->isEditable()) delegate->pdfViewControllerDidTapOnAnnotation(annotation, point);
}

} // namespace norvane
