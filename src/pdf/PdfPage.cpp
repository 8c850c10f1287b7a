#include "src/pdf/ContentStream.h"
#include "src/pdf/PdfErrors.h"
#include "src/pdf/State.h"

#include <norvane/pdf/PdfPage.h>

#include <qpdf/QPDFPageObjectHelper.hh>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace norvane {
namespace {

constexpr PdfRect kLetter{0, 0, 612, 792};
constexpr double kFarthestCoordinate = 1'000'000;

constexpr std::array<const char*, 14> kStampNames{"/Approved",     "/Experimental",    "/NotApproved",
                                                  "/AsIs",         "/Expired",         "/NotForPublicRelease",
                                                  "/Confidential", "/Final",           "/Sold",
                                                  "/Departmental", "/ForComment",      "/TopSecret",
                                                  "/Draft",        "/ForPublicRelease"};

bool readRectangle(QPDFObjectHandle array, PdfRect& rect) {
    if (!array.isArray() || array.getArrayNItems() != 4) return false;
    int index = 0;
    for (double* corner : {&rect.x1, &rect.y1, &rect.x2, &rect.y2}) {
        if (!array.getArrayItem(index++).getValueAsNumber(*corner)) return false;
        if (!(std::abs(*corner) <= kFarthestCoordinate)) return false;
    }
    rect = rect.normalized();
    return rect.x1 < rect.x2 && rect.y1 < rect.y2;
}

/// How far the point lies outside the rectangle, 0 inside.
double distanceTo(const PdfRect& rect, const Point& point) {
    const double x = std::max({rect.x1 - point.x, 0.0, point.x - rect.x2});
    const double y = std::max({rect.y1 - point.y, 0.0, point.y - rect.y2});
    return std::hypot(x, y);
}

PdfRect thickened(PdfRect rect, double minimum) {
    const double x = std::max(0.0, minimum - (rect.x2 - rect.x1)) / 2;
    const double y = std::max(0.0, minimum - (rect.y2 - rect.y1)) / 2;
    return {rect.x1 - x, rect.y1 - y, rect.x2 + x, rect.y2 + y};
}

std::shared_ptr<PdfAnnotation::State> newAnnotation(const PdfPage::State& page, const PdfRect& rect,
                                                    const char* subtype) {
    auto state = std::make_shared<PdfAnnotation::State>();
    const PdfRect box = mediaBoxOf(page.page);
    state->document = page.document;
    state->page = page.page;
    state->look = std::make_shared<AnnotationLook>();
    state->look->origin = {box.x1, box.y1};
    QPDFObjectHandle dictionary = QPDFObjectHandle::newDictionary();
    dictionary.replaceKey("/Type", QPDFObjectHandle::newName("/Annot"));
    dictionary.replaceKey("/Subtype", QPDFObjectHandle::newName(subtype));
    dictionary.replaceKey("/P", page.page);
    state->look->object = page.document->qpdf->makeIndirectObject(dictionary);
    page.document->annotations[state->look->object.getObjectID()] = state;
    PdfAnnotation(state).resize(rect);
    PdfAnnotation(state).setFlag(PdfAnnotationFlag::Print, true);
    return state;
}

std::shared_ptr<PdfAnnotation::State> knownOrRead(const PdfPage::State& page, QPDFObjectHandle object,
                                                  const PdfRect& fileRect) {
    auto& known = page.document->annotations[object.getObjectID()];
    if (auto state = known.lock()) return state;
    auto state = std::make_shared<PdfAnnotation::State>();
    const PdfRect box = mediaBoxOf(page.page);
    state->document = page.document;
    state->page = page.page;
    state->isOnPage = true;
    state->look = std::make_shared<AnnotationLook>();
    state->look->object = object;
    state->look->origin = {box.x1, box.y1};
    state->look->rect = {fileRect.x1 - box.x1, fileRect.y1 - box.y1, fileRect.x2 - box.x1,
                         fileRect.y2 - box.y1};
    if (object.isIndirect()) known = state;
    return state;
}

} // namespace

PdfRect mediaBoxOf(QPDFObjectHandle page) {
    PdfRect box;
    return readRectangle(QPDFPageObjectHelper(page).getAttribute("/MediaBox", false), box) ? box : kLetter;
}

QPDFObjectHandle pdfNumbers(std::initializer_list<double> values) {
    std::vector<QPDFObjectHandle> items;
    items.reserve(values.size());
    for (const double value : values)
        items.push_back(QPDFObjectHandle::newReal(pdfNumber(value)));
    return QPDFObjectHandle::newArray(items);
}

QPDFObjectHandle pdfRectangle(const PdfRect& rect) {
    return pdfNumbers({rect.x1, rect.y1, rect.x2, rect.y2});
}

std::size_t PdfPage::number() const {
    const std::scoped_lock guard(state_->document->mutex);
    return state_->document->pageNumberOf(state_->page);
}

Size PdfPage::size() const {
    const std::scoped_lock guard(state_->document->mutex);
    const PdfRect box = mediaBoxOf(state_->page);
    return {box.x2 - box.x1, box.y2 - box.y1};
}

PdfAnnotation PdfPage::createFreeText(const PdfRect& rect) const {
    const std::scoped_lock guard(state_->document->mutex);
    return PdfAnnotation(newAnnotation(*state_, rect, "/FreeText"));
}

PdfAnnotation PdfPage::createRubberStamp(const PdfRect& rect, int icon) const {
    const std::scoped_lock guard(state_->document->mutex);
    auto state = newAnnotation(*state_, rect, "/Stamp");
    const bool isStandard = icon >= 0 && static_cast<std::size_t>(icon) < kStampNames.size();
    state->look->object.replaceKey(
        "/Name",
        QPDFObjectHandle::newName(isStandard ? kStampNames[static_cast<std::size_t>(icon)] : "/Custom"));
    return PdfAnnotation(std::move(state));
}

void PdfPage::pushFront(const PdfAnnotation& annotation) const {
    const std::scoped_lock guard(state_->document->mutex);
    if (!annotation.isValid() || std::exchange(annotation.state_->isOnPage, true)) return;
    QPDFObjectHandle page = state_->page;
    QPDFObjectHandle list = page.getKey("/Annots");
    // A list may be shared between pages; this page gets its own before it is changed.
    if (state_->document->pagesWithOwnAnnotations.insert(page.getObjectID()).second) {
        list = list.isArray() ? list.shallowCopy() : QPDFObjectHandle::newArray();
        page.replaceKey("/Annots", list);
    }
    list.insertItem(0, annotation.state_->look->object);
}

std::optional<PdfAnnotation> PdfPage::annotationAt(const Point& point, double distance,
                                                   double minimumLineWeight) const {
    const std::scoped_lock guard(state_->document->mutex);
    const PdfRect box = mediaBoxOf(state_->page);
    const Point filePoint{point.x + box.x1, point.y + box.y1};
    QPDFObjectHandle list = QPDFObjectHandle(state_->page).getKey("/Annots");
    for (int i = list.isArray() ? list.getArrayNItems() : 0; i-- > 0;) {
        QPDFObjectHandle object = list.getArrayItem(i);
        PdfRect rect;
        if (!object.isDictionary() || !readRectangle(object.getKey("/Rect"), rect)) continue;
        if (distanceTo(thickened(rect, minimumLineWeight), filePoint) <= distance)
            return PdfAnnotation(knownOrRead(*state_, object, rect));
    }
    return std::nullopt;
}

} // namespace norvane
