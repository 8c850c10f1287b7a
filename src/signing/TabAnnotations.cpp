#include "src/signing/TabAnnotations.h"

#include <norvane/model/NVMCheckbox.h>
#include <norvane/model/NVMImageTabProtocol.h>
#include <norvane/model/NVMRadio.h>
#include <norvane/pdf/PdfDocument.h>
#include <norvane/signing/NVMPTNPDFImageAnnotation.h>
#include <norvane/signing/NVMPTNPDFTextAnnotation.h>

namespace norvane {

namespace {

bool isSelected(const NVMTab& tab) {
    if (const auto* checkbox = dynamic_cast<const NVMCheckbox*>(&tab)) return checkbox->selected;
    if (const auto* radio = dynamic_cast<const NVMRadio*>(&tab)) return radio->selected;
    return false;
}

} // namespace

bool isImageTabType(NVMTabType type) {
    return type == NVMTabTypeSignHere || type == NVMTabTypeInitialHere || type == NVMTabTypeCheckbox ||
           type == NVMTabTypeRadio;
}

AnnotatedTab annotatedTabOf(const NVMTab& tab) {
    AnnotatedTab result;
    result.tabId = tab.tabId.value_or("");
    result.type = tab.tabType;
    result.recipientId = tab.recipientId.value_or("");
    result.pageNumber = static_cast<std::int64_t>(tab.pageNumber.value_or(0));
    if (tab.frame) {
        result.originX = tab.frame->originX;
        result.originY = tab.frame->originY;
        result.width = tab.frame->width;
        result.height = tab.frame->height;
    }
    result.required = tab.nvm_required();
    result.locked = tab.nvm_locked();
    result.selected = isSelected(tab);
    result.value = tab.value;
    return result;
}

std::shared_ptr<NVMPDFBaseAnnotation> createTabAnnotation(const NVMTab& tab,
                                                          const std::shared_ptr<PdfDocument>& document,
                                                          int page, const std::weak_ptr<AnnotationView>& view,
                                                          DecodedImages& images) {
    if (page < 1) return nullptr;
    const auto pdfPage = document->page(static_cast<std::size_t>(page));
    if (!pdfPage) return nullptr;
    const AnnotatedTab annotated = annotatedTabOf(tab);
    if (!isImageTabType(tab.tabType))
        return NVMPTNPDFTextAnnotation::CreateWithTab(annotated, document, *pdfPage, view);
    auto annotation = NVMPTNPDFImageAnnotation::CreateWithTab(annotated, document, *pdfPage, view);
    if (annotation) showTabContent(*annotation, tab, images);
    return annotation;
}

void showTabContent(NVMPDFBaseAnnotation& annotation, const NVMTab& tab, DecodedImages& images) {
    annotation.setTab(annotatedTabOf(tab));
    const auto* imageTab = dynamic_cast<const NVMImageTabProtocol*>(&tab);
    std::optional<Image> image;
    if (imageTab && imageTab->imageData && imageTab->imageData->data)
        image = images.imageOf(*imageTab->imageData->data);
    annotation.setContent(image);
    annotation.updateErroneous();
}

} // namespace norvane
