#include "src/signing/annotations/TabLooks.h"

#include <norvane/platform/Platform.h>
#include <norvane/signing/NVMGeometry.h>
#include <norvane/signing/NVMPTNPDFImageAnnotation.h>

#include <algorithm>
#include <cmath>

namespace norvane {
namespace {

constexpr double kThinnestLine = 0.5;
/// Looks stay in the document, and paper shows more than most displays: pixels a point at least.
constexpr double kPrintScale = 4;

} // namespace

std::shared_ptr<NVMPTNPDFImageAnnotation>
NVMPTNPDFImageAnnotation::CreateWithTab(const AnnotatedTab& tab, const std::shared_ptr<PdfDocument>& document,
                                        const PdfPage& page, const std::weak_ptr<AnnotationView>& view) {
    if (!document) return nullptr;
    auto annotation = std::make_shared<NVMPTNPDFImageAnnotation>();
    annotation->page_ = page;
    annotation->pdfAnnotation_ = page.createRubberStamp(ptnRectFromTab(tab, page), 14);
    page.pushFront(annotation->pdfAnnotation_);
    annotation->pdfDocument_ = document;
    annotation->pdfViewCtrl_ = view;
    annotation->setupWithTab(tab);
    if (tab.width >= 1 && tab.height >= 1) {
        const Rect box = annotation->boundingBox();
        annotation->setBoundingBox(
            {box.x, box.y, static_cast<double>(tab.width), static_cast<double>(tab.height)});
    }
    annotation->setContent(std::nullopt);
    return annotation;
}

bool NVMPTNPDFImageAnnotation::isContentInvalid() const {
    return tab().type == NVMTabTypeRadio ? !isContentValidForTabGroup : !image_.has_value();
}

void NVMPTNPDFImageAnnotation::updateErroneous() {
    setErroneous(!isHighlighted() && isRequired() && isContentInvalid());
}

void NVMPTNPDFImageAnnotation::setErroneous(bool isErroneous) {
    if (isErroneous == NVMPDFBaseAnnotation::isErroneous()) return;
    NVMPDFBaseAnnotation::setErroneous(isErroneous);
    refreshVisuals();
}

void NVMPTNPDFImageAnnotation::setContent(const std::optional<Image>& image) {
    image_ = image && !image->isNull() ? image : std::nullopt;
    refreshVisuals();
}

void NVMPTNPDFImageAnnotation::updateSizeWithWidth(double width, double height) {
    const Rect box = boundingBox();
    setBoundingBox({box.x, box.y, width, height});
    refreshVisuals();
}

void NVMPTNPDFImageAnnotation::refreshVisuals() {
    const auto document = pdfDocument_.lock();
    const Image image = annotationImage();
    if (!document || !page_ || image.isNull()) return;
    const Rect box = boundingBox();
    const Size size = image.size();
    const double scale = std::min(box.width / size.width, box.height / size.height);
    const Size preferred{std::trunc(size.width * scale), std::trunc(size.height * scale)};
    {
        const auto lock = pdfAnnotation_.lockDocument();
        const PdfRect rect = ptnRectFromTab(tab(), *page_, preferred);
        pdfAnnotation_.resize(rect);
        pdfAnnotation_.setAppearance(ptnImageForUIImage(image, *document), rect.x1,
                                     rect.y1 - preferred.height, preferred.width, preferred.height);
    }
    updateOnViewController();
}

PdfImage NVMPTNPDFImageAnnotation::ptnImageForUIImage(const Image& image, PdfDocument& document) {
    return document.imageFor(image);
}

Image NVMPTNPDFImageAnnotation::annotationImage() const { return image_ ? *image_ : drawnLook(); }

Rect NVMPTNPDFImageAnnotation::innerFrame() const {
    const Rect box = boundingBox();
    const double stroke = defaultStrokeWidth();
    return {stroke / 2, stroke / 2, box.width - stroke, box.height - stroke};
}

double NVMPTNPDFImageAnnotation::defaultStrokeWidth() const {
    return std::max(kThinnestLine, NVMGeometry::roundFloat(boundingBox().height / 25));
}

double NVMPTNPDFImageAnnotation::defaultHighlightWidth() const {
    return std::max(kThinnestLine, NVMGeometry::roundFloat(boundingBox().height / 50));
}

Image NVMPTNPDFImageAnnotation::drawnLook() const {
    TabLook look;
    look.size = {boundingBox().width, boundingBox().height};
    look.strokeWidth = defaultStrokeWidth();
    look.highlightWidth = defaultHighlightWidth();
    const Rect inner = innerFrame(); // less the room that a highlight takes
    const double room = look.highlightWidth;
    look.frame = {inner.x + room / 2, inner.y + room / 2, inner.width - room, inner.height - room};
    look.isEditable = isEditable();
    look.isRequired = isRequired();
    look.isHighlighted = isHighlighted();
    look.isErroneous = isErroneous();
    look.isChecked = tab().selected;
    return tabLook(tab().type, look, std::max(kPrintScale, Platform::current().displayScale));
}

} // namespace norvane
