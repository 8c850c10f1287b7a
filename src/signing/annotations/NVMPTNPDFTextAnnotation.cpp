#include <norvane/signing/NVMPTNPDFTextAnnotation.h>

namespace norvane {
namespace {

constexpr PdfBorderStyle kBorder{2, 10, 20};
constexpr Color kBlack{0, 0, 0, 1};
constexpr Color kWhite{1, 1, 1, 1};
constexpr Color kGreyText{0.6, 0.6, 0.6, 1};

Color borderColorOf(NVMTextAnnotationState state) {
    switch (state) {
    case NVMTextAnnotationState::Normal:
        return {0.165, 0.4, 0.902, 1};
    case NVMTextAnnotationState::Highlighted:
        return {0.2, 0.9, 0.3, 1};
    case NVMTextAnnotationState::Error:
        return {0.765, 0.114, 0.169, 1};
    case NVMTextAnnotationState::ReadOnly:
        break;
    }
    return {0.8, 0.8, 0.8, 1};
}

} // namespace

std::shared_ptr<NVMPTNPDFTextAnnotation>
NVMPTNPDFTextAnnotation::CreateWithTab(const AnnotatedTab& tab, const std::shared_ptr<PdfDocument>& document,
                                       const PdfPage& page, const std::weak_ptr<AnnotationView>& view) {
    if (!document) return nullptr;
    auto annotation = std::make_shared<NVMPTNPDFTextAnnotation>();
    annotation->page_ = page;
    annotation->pdfAnnotation_ = page.createFreeText(ptnRectFromTab(tab, page));
    annotation->pdfViewCtrl_ = view;
    annotation->setupWithTab(tab);
    annotation->refreshVisuals();
    const bool hasValue = tab.value && !tab.value->empty();
    annotation->setSubject(hasValue ? *tab.value : subjectForTabType(tab.type));
    page.pushFront(annotation->pdfAnnotation_);
    return annotation;
}

bool NVMPTNPDFTextAnnotation::isContentInvalid() const {
    return trimmedContents().empty() || hasDefaultSubjectAsContent();
}

void NVMPTNPDFTextAnnotation::updateErroneous() {
    setErroneous(!isHighlighted() && isRequired() && isContentInvalid());
}

void NVMPTNPDFTextAnnotation::refreshVisuals() {
    setStyleForState(currentState());
    updateOnViewController();
}

void NVMPTNPDFTextAnnotation::setEditable(bool isEditable) {
    if (isEditable == NVMPDFBaseAnnotation::isEditable()) return;
    NVMPDFBaseAnnotation::setEditable(isEditable);
    pdfAnnotation_.setFlag(PdfAnnotationFlag::ReadOnly, !isEditable);
    setStyleForState(isEditable ? NVMTextAnnotationState::Normal : NVMTextAnnotationState::ReadOnly);
    updateOnViewController();
}

void NVMPTNPDFTextAnnotation::setErroneous(bool isErroneous) {
    if (isErroneous == NVMPDFBaseAnnotation::isErroneous()) return;
    NVMPDFBaseAnnotation::setErroneous(isErroneous);
    refreshVisuals();
}

NVMTextAnnotationState NVMPTNPDFTextAnnotation::currentState() const {
    if (isHighlighted()) return NVMTextAnnotationState::Highlighted;
    if (!isEditable()) return NVMTextAnnotationState::ReadOnly;
    return isErroneous() ? NVMTextAnnotationState::Error : NVMTextAnnotationState::Normal;
}

void NVMPTNPDFTextAnnotation::setStyleForState(NVMTextAnnotationState state) {
    const auto lock = pdfAnnotation_.lockDocument();
    setTextBorderForStyle(state);
    setTextBackgroundColorForStyle(state);
    setTextColorForStyle(state);
    pdfAnnotation_.refreshAppearance();
}

void NVMPTNPDFTextAnnotation::setTextBorderForStyle(NVMTextAnnotationState state) {
    pdfAnnotation_.setBorderStyle(kBorder);
    pdfAnnotation_.setLineColor(borderColorOf(state));
}

void NVMPTNPDFTextAnnotation::setTextColorForStyle(NVMTextAnnotationState state) {
    pdfAnnotation_.setTextColor(state == NVMTextAnnotationState::ReadOnly ? kGreyText : kBlack);
}

void NVMPTNPDFTextAnnotation::setTextBackgroundColorForStyle(NVMTextAnnotationState) {
    pdfAnnotation_.setFillColor(kWhite);
}

} // namespace norvane
