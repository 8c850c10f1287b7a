#include <norvane/platform/NVMException.h>
#include <norvane/sdk/Configuration.h>
#include <norvane/signing/NVMPDFBaseAnnotation.h>

#include <algorithm>

namespace norvane {
namespace {

[[noreturn]] void mustOverride(const std::string& operation) {
    throw NVMException("NSInternalInconsistencyException",
                       "You must override " + operation + " in a subclass");
}

bool readsContentsAsSubject(NVMTagType type) {
    return type == NVMTabTypeText || (type >= NVMTabTypeCompany && type <= NVMTabTypeDateSigned);
}

bool showsSubject(NVMTagType type) { return readsContentsAsSubject(type) || type == NVMTabTypeFormula; }

} // namespace

Size NVMPDFBaseAnnotation::defaultSizeForTabType(NVMTagType type) {
    switch (type) {
    case NVMTabTypeUnsupported:
        return {0, 0};
    case NVMTabTypeSignHere:
        return {53, 45};
    case NVMTabTypeInitialHere:
        return {36, 50};
    case NVMTabTypeCheckbox:
    case NVMTabTypeRadio:
        return {17, 17};
    default:
        return {84, 19};
    }
}

bool NVMPDFBaseAnnotation::isEditableTabType(NVMTagType type) {
    return type != NVMTabTypeFullName && type != NVMTabTypeDateSigned && type != NVMTabTypeFormula;
}

bool NVMPDFBaseAnnotation::shouldIncreaseWidthForTabType(NVMTagType type) {
    return type >= NVMTabTypeCompany && type <= NVMTabTypeFormula;
}

std::string NVMPDFBaseAnnotation::subjectForTabType(NVMTagType type) {
    return nameForTagType(type).value_or(std::string());
}

Point NVMPDFBaseAnnotation::pdfPositionWithPosition(const Point& position, const Size& pageSize) {
    return {position.x, pageSize.height - position.y};
}

PdfRect NVMPDFBaseAnnotation::ptnRectFromTab(const AnnotatedTab& tab, const PdfPage& page) {
    return ptnRectFromTab(tab, page, defaultSizeForTabType(tab.type));
}

PdfRect NVMPDFBaseAnnotation::ptnRectFromTab(const AnnotatedTab& tab, const PdfPage& page,
                                             const Size& preferredSize) {
    const Point position = pdfPositionWithPosition(
        {static_cast<double>(tab.originX), static_cast<double>(tab.originY)}, page.size());
    const double width = std::max(preferredSize.width, static_cast<double>(tab.width));
    const double height = std::max(preferredSize.height, static_cast<double>(tab.height));
    return {position.x, position.y, position.x + width, position.y - height};
}

bool NVMPDFBaseAnnotation::isTextBased() const { mustOverride("isTextBased"); }
bool NVMPDFBaseAnnotation::isImageBased() const { mustOverride("isImageBased"); }
bool NVMPDFBaseAnnotation::isContentInvalid() const { mustOverride("isContentInvalid"); }

void NVMPDFBaseAnnotation::setupWithTab(const AnnotatedTab& tab) {
    tab_ = tab;
    if (!tab.tabId.empty()) setUniqueId(tab.tabId);
    isRequired_ = tab.required;
    isEditable_ = isEditableTabType(tab.type) && !tab.locked;
    setSubject(subjectForTabType(tab.type));
    const Size size = defaultSizeForTagType(tab.type);
    boundingBox_ = {0, 0, size.width, size.height};
    if (isTextBased()) {
        pdfAnnotation_.setFlag(PdfAnnotationFlag::ReadOnly, !isEditable_);
        pdfAnnotation_.setFlag(PdfAnnotationFlag::LockedContents, true);
    }
    pdfAnnotation_.setFlag(PdfAnnotationFlag::Locked, true);
}

std::string NVMPDFBaseAnnotation::subject() const {
    return readsContentsAsSubject(tab_.type) ? pdfAnnotation_.contents() : subjectForTabType(tab_.type);
}

void NVMPDFBaseAnnotation::setSubject(const std::string& subject) {
    if (showsSubject(tab_.type)) setVisualContent(subject);
}

Rect NVMPDFBaseAnnotation::defaultBoundingBoxWithScaleValue(double scale) const {
    const Size size = defaultSizeForTabType(tab_.type);
    return {0, 0, size.width * scale, size.height * scale};
}

void NVMPDFBaseAnnotation::setEditableForCurrentRecipientId(const std::string& recipientId) {
    setEditable(isEditableTabType(tab_.type) && tab_.recipientId == recipientId && !tab_.locked);
}

bool NVMPDFBaseAnnotation::isSignatureOrInitials() const {
    return tab_.type == NVMTabTypeSignHere || tab_.type == NVMTabTypeInitialHere;
}

void NVMPDFBaseAnnotation::setVisualContent(const std::optional<std::string>& text) {
    setContentIncreaseWidthToFitContent(text, shouldIncreaseWidthForTabType(tab_.type));
}

void NVMPDFBaseAnnotation::setContentIncreaseWidthToFitContent(const std::optional<std::string>& text,
                                                               bool increaseWidth) {
    if (!text) return;
    const auto lock = pdfAnnotation_.lockDocument();
    if (!text->empty() && increaseWidth) increaseWidthToFitSize(getContentSizeBasedOnContent(*text));
    pdfAnnotation_.setContents(*text);
    pdfAnnotation_.refreshAppearance();
}

Size NVMPDFBaseAnnotation::getContentSizeBasedOnContent(const std::string& text) const {
    const double fontSize = pdfAnnotation_.fontSize();
    return {pdfTextWidth(text, fontSize) + NVM_WIDTH_PADDING, pdfLineHeight(fontSize)};
}

void NVMPDFBaseAnnotation::increaseWidthToFitSize(const Size& size) {
    const PdfRect rect = pdfAnnotation_.rect();
    if (size.width > rect.width()) pdfAnnotation_.resize({rect.x1, rect.y1, rect.x1 + size.width, rect.y2});
}

void NVMPDFBaseAnnotation::setDefaultVisualContentIfEmpty() {
    if (!isTextBased() || !trimmedContents().empty()) return;
    if (configuredValueForSetupKey(NVM_SETUP_OFFLINE_SIGNING_USE_PLACEHOLDER_TAB_VALUE))
        setVisualContent(subjectForTabType(tab_.type));
}

bool NVMPDFBaseAnnotation::hasDefaultSubjectAsContent() const {
    return trimmedContents() == subjectForTabType(tab_.type);
}

std::string NVMPDFBaseAnnotation::trimmedContents() const {
    constexpr const char* kBlanks = " \t\n\v\f\r";
    const std::string contents = pdfAnnotation_.contents();
    const std::size_t first = contents.find_first_not_of(kBlanks);
    if (first == std::string::npos) return {};
    return contents.substr(first, contents.find_last_not_of(kBlanks) - first + 1);
}

void NVMPDFBaseAnnotation::updateOnViewController() const {
    if (const auto view = pdfViewCtrl_.lock()) view->updateAnnotation(pdfAnnotation_, page());
}

std::string NVMPDFBaseAnnotation::description() const {
    return "annotation of tab " + tab_.tabId + ", type " + std::to_string(tab_.type) + ", page " +
           std::to_string(page());
}

} // namespace norvane
