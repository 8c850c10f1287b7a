#include "src/pdf/AnnotationLook.h"

#include "src/pdf/ContentStream.h"
#include "src/pdf/FreeTextAppearance.h"
#include "src/pdf/State.h"

#include <utility>

namespace norvane {

PdfRect AnnotationLook::fileRect() const {
    const PdfRect box = rect.normalized();
    return {box.x1 + origin.x, box.y1 + origin.y, box.x2 + origin.x, box.y2 + origin.y};
}

std::string AnnotationLook::contents() const {
    QPDFObjectHandle value = QPDFObjectHandle(object).getKey("/Contents");
    return value.isString() ? value.getUTF8Value() : std::string();
}

void AnnotationLook::draw(PdfDocument::State& document) {
    switch (kind) {
    case Kind::Nothing:
        break;
    case Kind::FreeText:
        drawFreeText(document);
        break;
    case Kind::Image:
        drawImage(document);
        break;
    }
    isStale = false;
}

void AnnotationLook::drawFreeText(PdfDocument::State& document) {
    const FreeTextAppearance drawn = freeTextAppearance(*this, document);
    const PdfRect box = rect.normalized();
    setAppearance(document, drawn.content, {0, 0, box.x2 - box.x1, box.y2 - box.y1}, drawn.resources);
}

void AnnotationLook::drawImage(PdfDocument::State& document) {
    ContentStream content;
    QPDFObjectHandle resources = QPDFObjectHandle::newDictionary();
    if (!image.isNull()) {
        content.save();
        content.number(imagePlace.width).number(0).number(0).number(imagePlace.height);
        content.number(imagePlace.x + origin.x).number(imagePlace.y + origin.y).op("cm");
        content.op("/Image Do");
        content.restore();
        QPDFObjectHandle images = QPDFObjectHandle::newDictionary();
        images.replaceKey("/Image", document.imageObject(image.image()));
        resources.replaceKey("/XObject", images);
    }
    setAppearance(document, content.text(), fileRect(), resources);
}

void AnnotationLook::setAppearance(PdfDocument::State& document, const std::string& content,
                                   const PdfRect& box, QPDFObjectHandle resources) {
    if (!appearance.isInitialized()) {
        appearance = document.qpdf->newStream();
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

void PdfDocument::State::markStale(const std::shared_ptr<AnnotationLook>& look) {
    if (!std::exchange(look->isStale, true)) staleLooks.push_back(look);
}

void PdfDocument::State::drawStaleLooks() {
    for (const auto& look : staleLooks)
        look->draw(*this);
    staleLooks.clear();
}

} // namespace norvane
