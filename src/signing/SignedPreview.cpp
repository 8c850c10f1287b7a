#include "src/signing/TabAnnotations.h"

#include <norvane/model/NVMCheckbox.h>
#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/pdf/PdfDocument.h>
#include <norvane/sdk/Errors.h>
#include <norvane/signing/SignedPreview.h>

#include <algorithm>

namespace norvane {

namespace {

bool isFilled(const NVMTab& tab) {
    if (const auto* imageTab = dynamic_cast<const NVMImageTabProtocol*>(&tab))
        return imageTab->imageData && imageTab->imageData->data;
    if (tab.tabType == NVMTabTypeCheckbox || tab.tabType == NVMTabTypeRadio)
        return annotatedTabOf(tab).selected;
    return tab.value && !tab.value->empty();
}

constexpr double kFontSize = 12; ///< points, that of a new annotation

/// Black text on the page itself: no frame, no ground.
void writePlainText(const NVMTab& tab, const PdfPage& page) {
    PdfRect rect = NVMPDFBaseAnnotation::ptnRectFromTab(annotatedTabOf(tab), page);
    if (NVMPDFBaseAnnotation::shouldIncreaseWidthForTabType(tab.tabType))
        rect.x2 = std::max(rect.x2, rect.x1 + pdfTextWidth(*tab.value, kFontSize) + 2 * NVM_WIDTH_PADDING);
    PdfAnnotation annotation = page.createFreeText(rect);
    annotation.setBorderStyle({0, 0, 0});
    annotation.setTextColor(Color{});
    annotation.setContents(*tab.value);
    annotation.setFlag(PdfAnnotationFlag::ReadOnly, true);
    annotation.refreshAppearance();
    page.pushFront(annotation);
}

void drawTab(const NVMTab& tab, const std::shared_ptr<PdfDocument>& document, int pageNumber,
             DecodedImages& images) {
    const auto page = document->page(static_cast<std::size_t>(std::max(pageNumber, 0)));
    if (!page) return;
    if (!isImageTabType(tab.tabType)) return writePlainText(tab, *page);
    const auto annotation = createTabAnnotation(tab, document, pageNumber, {}, images);
    annotation->setEditable(false);
    annotation->setErroneous(false); // a choice made may still count as lacking an image or a valid group
    annotation->refreshVisuals();
}

} // namespace

Result<Data> signedPreviewOf(const NVMEnvelopeDefinition& envelope) {
    if (!envelope.combinedDocument || !envelope.combinedDocument->pdf)
        return NVM_errorTemplateHasNoDocuments();
    auto document = PdfDocument::open(*envelope.combinedDocument->pdf);
    if (!document) return document.error();
    DecodedImages images;
    int startPage = 0;
    for (const auto& source : envelope.sortedDocumentsByOrder()) {
        for (const auto& tab : envelope.tagsForDocumentId(source->documentId)) {
            if (!isFilled(*tab)) continue;
            const int page = startPage + static_cast<int>(tab->pageNumber.value_or(1));
            drawTab(*tab, *document, page, images);
        }
        startPage += static_cast<int>(Value(source->pages).integerValue());
    }
    return (*document)->save();
}

} // namespace norvane
