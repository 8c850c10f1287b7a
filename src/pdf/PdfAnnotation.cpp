#include "src/pdf/State.h"
#include "src/pdf/TextLayout.h"

#include <norvane/pdf/PdfAnnotation.h>

#include <algorithm>
#include <cmath>

namespace norvane {
namespace {

constexpr double kDefaultFontSize = 12;

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
    return state_ ? state_->look->object.getObjectID() : 0;
}

std::size_t PdfAnnotation::pageNumber() const {
    const auto guard = lockDocument();
    return state_ ? state_->document->pageNumberOf(state_->page) : 0;
}

PdfRect PdfAnnotation::rect() const {
    const auto guard = lockDocument();
    return state_ ? state_->look->rect : PdfRect{};
}

void PdfAnnotation::resize(const PdfRect& rect) {
    if (!state_) return;
    const auto guard = lockDocument();
    state_->look->rect = rect;
    state_->look->object.replaceKey("/Rect", pdfRectangle(state_->look->fileRect()));
}

std::string PdfAnnotation::uniqueId() const {
    const auto guard = lockDocument();
    return state_ ? stringOf(state_->look->object, "/NM") : std::string();
}

void PdfAnnotation::setUniqueId(const std::string& uniqueId) {
    if (!state_) return;
    const auto guard = lockDocument();
    state_->look->object.replaceKey("/NM", QPDFObjectHandle::newUnicodeString(uniqueId));
}

bool PdfAnnotation::flag(PdfAnnotationFlag flag) const {
    const auto guard = lockDocument();
    long long flags = 0;
    if (state_) state_->look->object.getKey("/F").getValueAsInt(flags);
    return (flags >> static_cast<int>(flag) & 1) != 0;
}

void PdfAnnotation::setFlag(PdfAnnotationFlag flag, bool isSet) {
    if (!state_) return;
    const auto guard = lockDocument();
    long long flags = 0;
    state_->look->object.getKey("/F").getValueAsInt(flags);
    const long long bit = 1LL << static_cast<int>(flag);
    state_->look->object.replaceKey("/F", QPDFObjectHandle::newInteger(isSet ? flags | bit : flags & ~bit));
}

std::string PdfAnnotation::contents() const {
    const auto guard = lockDocument();
    return state_ ? state_->look->contents() : std::string();
}

void PdfAnnotation::setContents(const std::string& contents) {
    if (!state_) return;
    const auto guard = lockDocument();
    state_->look->object.replaceKey("/Contents", QPDFObjectHandle::newUnicodeString(contents));
}

double PdfAnnotation::fontSize() const {
    const auto guard = lockDocument();
    return state_ ? state_->look->fontSize : kDefaultFontSize;
}

void PdfAnnotation::setFontSize(double points) {
    if (!state_ || !(points > 0)) return;
    const auto guard = lockDocument();
    state_->look->fontSize = points;
}

void PdfAnnotation::setBorderStyle(const PdfBorderStyle& style) {
    if (!state_) return;
    const auto guard = lockDocument();
    state_->look->border = style;
}

void PdfAnnotation::setLineColor(const Color& color) {
    if (!state_) return;
    const auto guard = lockDocument();
    state_->look->lineColor = color;
}

void PdfAnnotation::setTextColor(const Color& color) {
    if (!state_) return;
    const auto guard = lockDocument();
    state_->look->textColor = color;
}

void PdfAnnotation::setFillColor(const Color& color) {
    if (!state_) return;
    const auto guard = lockDocument();
    state_->look->fillColor = color;
}

void PdfAnnotation::refreshAppearance() {
    if (!state_) return;
    const auto guard = lockDocument();
    state_->look->kind = AnnotationLook::Kind::FreeText;
    state_->document->markStale(state_->look);
}

void PdfAnnotation::setAppearance(const PdfImage& image, double x, double y, double width, double height) {
    if (!state_) return;
    const auto guard = lockDocument();
    AnnotationLook& look = *state_->look;
    look.kind = AnnotationLook::Kind::Image;
    look.image = image;
    look.imagePlace = {x, y, width, height};
    state_->document->markStale(state_->look);
}

double pdfTextWidth(const std::string& text, double fontSize) {
    const std::string shown = shownText(text);
    return faceFor(shown)->width(shown) * fontSize / 1000;
}

double pdfLineHeight(double fontSize) { return fontSize * TextFace::kLineHeight; }

} // namespace norvane
