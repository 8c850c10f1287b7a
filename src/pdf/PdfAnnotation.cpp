#include "src/pdf/FreeTextAppearance.h"
#include "src/pdf/State.h"

#include <norvane/pdf/PdfAnnotation.h>

#include <algorithm>
#include <cmath>

namespace norvane {
namespace {

constexpr double kDefaultFontSize = 12;

PdfRect shifted(const PdfRect& rect, const Point& by) {
    return {rect.x1 + by.x, rect.y1 + by.y, rect.x2 + by.x, rect.y2 + by.y};
}

std::string stringOf(QPDFObjectHandle object, const char* key) {
    QPDFObjectHandle value = object.getKey(key);
    return value.isString() ? value.getUTF8Value() : std::string();
}

} // namespace

std::unique_lock<std::recursive_mutex> PdfAnnotation::lockDocument() const {
    return state_ ? std::unique_lock(state_->document->mutex) : std::unique_lock<std::recursive_mutex>();
}

int PdfAnnotation::objectNumber() const {
    const auto guard = lockDocument();
    return state_ ? state_->object.getObjectID() : 0;
}

std::size_t PdfAnnotation::pageNumber() const {
    const auto guard = lockDocument();
    return state_ ? state_->document->pageNumberOf(state_->page) : 0;
}

PdfRect PdfAnnotation::rect() const {
    const auto guard = lockDocument();
    return state_ ? state_->rect : PdfRect{};
}

void PdfAnnotation::resize(const PdfRect& rect) {
    if (!state_) return;
    const auto guard = lockDocument();
    state_->rect = rect;
    state_->object.replaceKey("/Rect", pdfRectangle(shifted(rect.normalized(), state_->origin)));
}

std::string PdfAnnotation::uniqueId() const {
    const auto guard = lockDocument();
    return state_ ? stringOf(state_->object, "/NM") : std::string();
}

void PdfAnnotation::setUniqueId(const std::string& uniqueId) {
    if (!state_) return;
    const auto guard = lockDocument();
    state_->object.replaceKey("/NM", QPDFObjectHandle::newUnicodeString(uniqueId));
}

bool PdfAnnotation::flag(PdfAnnotationFlag flag) const {
    const auto guard = lockDocument();
    long long flags = 0;
    if (state_) state_->object.getKey("/F").getValueAsInt(flags);
    return (flags >> static_cast<int>(flag) & 1) != 0;
}

void PdfAnnotation::setFlag(PdfAnnotationFlag flag, bool isSet) {
    if (!state_) return;
    const auto guard = lockDocument();
    long long flags = 0;
    state_->object.getKey("/F").getValueAsInt(flags);
    const long long bit = 1LL << static_cast<int>(flag);
    state_->object.replaceKey("/F", QPDFObjectHandle::newInteger(isSet ? flags | bit : flags & ~bit));
}

std::string PdfAnnotation::contents() const {
    const auto guard = lockDocument();
    return state_ ? stringOf(state_->object, "/Contents") : std::string();
}

void PdfAnnotation::setContents(const std::string& contents) {
    if (!state_) return;
    const auto guard = lockDocument();
    state_->object.replaceKey("/Contents", QPDFObjectHandle::newUnicodeString(contents));
}

double PdfAnnotation::fontSize() const {
    const auto guard = lockDocument();
    return state_ ? state_->fontSize : kDefaultFontSize;
}

void PdfAnnotation::setFontSize(double points) {
    if (!state_ || !(points > 0)) return;
    const auto guard = lockDocument();
    state_->fontSize = points;
}

void PdfAnnotation::setBorderStyle(const PdfBorderStyle& style) {
    if (!state_) return;
    const auto guard = lockDocument();
    state_->border = style;
}

void PdfAnnotation::setLineColor(const Color& color) {
    if (!state_) return;
    const auto guard = lockDocument();
    state_->lineColor = color;
}

void PdfAnnotation::setTextColor(const Color& color) {
    if (!state_) return;
    const auto guard = lockDocument();
    state_->textColor = color;
}

void PdfAnnotation::setFillColor(const Color& color) {
    if (!state_) return;
    const auto guard = lockDocument();
    state_->fillColor = color;
}

void PdfAnnotation::refreshAppearance() {
    if (!state_) return;
    const auto guard = lockDocument();
    drawFreeText(*state_, contents());
}

void PdfAnnotation::setAppearance(const PdfImage& image, double x, double y, double width, double height) {
    if (!state_) return;
    const auto guard = lockDocument();
    ContentStream content;
    QPDFObjectHandle resources = QPDFObjectHandle::newDictionary();
    if (!image.isNull()) {
        content.save();
        content.number(width).number(0).number(0).number(height);
        content.number(x + state_->origin.x).number(y + state_->origin.y).op("cm");
        content.op("/Image Do");
        content.restore();
        QPDFObjectHandle images = QPDFObjectHandle::newDictionary();
        images.replaceKey("/Image", state_->document->qpdf->getObjectByID(image.objectNumber(), 0));
        resources.replaceKey("/XObject", images);
    }
    state_->setAppearance(content.text(), shifted(state_->rect.normalized(), state_->origin), resources);
}

void PdfAnnotation::State::setAppearance(const std::string& content, const PdfRect& box,
                                         QPDFObjectHandle resources) {
    if (!appearance.isInitialized()) {
        appearance = document->qpdf->newStream();
        appearance.getDict().replaceKey("/Type", QPDFObjectHandle::newName("/XObject"));
        appearance.getDict().replaceKey("/Subtype", QPDFObjectHandle::newName("/Form"));
        QPDFObjectHandle appearances = QPDFObjectHandle::newDictionary();
        appearances.replaceKey("/N", appearance);
        object.replaceKey("/AP", appearances);
    }
    appearance.replaceStreamData(content, QPDFObjectHandle::newNull(), QPDFObjectHandle::newNull());
    appearance.getDict().replaceKey("/BBox", pdfRectangle(box));
    appearance.getDict().replaceKey("/Resources", resources);
}

double pdfTextWidth(const std::string& text, double fontSize) {
    const std::string shown = shownText(text);
    return faceFor(shown)->width(shown) * fontSize / 1000;
}

double pdfLineHeight(double fontSize) { return fontSize * TextFace::kLineHeight; }

} // namespace norvane
