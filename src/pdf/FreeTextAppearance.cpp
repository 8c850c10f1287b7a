#include "src/pdf/FreeTextAppearance.h"

#include "src/pdf/HelveticaWidths.h"

#include <algorithm>

namespace norvane {
namespace {

/// The font with its widths spelled out, so that a stand-in for it keeps the same spacing.
QPDFObjectHandle helveticaOf(PdfDocument::State& document) {
    if (document.helvetica.isInitialized()) return document.helvetica;
    QPDFObjectHandle widths = QPDFObjectHandle::newArray();
    for (int code = kFirstHelveticaCode; code <= kLastHelveticaCode; ++code)
        widths.appendItem(QPDFObjectHandle::newInteger(helveticaWidth(static_cast<unsigned char>(code))));
    QPDFObjectHandle font = QPDFObjectHandle::parse(
        "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding "
        "/FirstChar 32 /LastChar 255 /FontDescriptor << /Type /FontDescriptor /FontName /Helvetica "
        "/Flags 32 /FontBBox [ -166 -225 1000 931 ] /ItalicAngle 0 /Ascent 718 /Descent -207 "
        "/CapHeight 718 /StemV 88 >> >>");
    font.replaceKey("/Widths", widths);
    QPDFObjectHandle descriptor = document.qpdf->makeIndirectObject(font.getKey("/FontDescriptor"));
    font.replaceKey("/FontDescriptor", descriptor);
    document.helvetica = document.qpdf->makeIndirectObject(font);
    return document.helvetica;
}

void drawBox(ContentStream& content, const AnnotationLook& look, const Size& size) {
    const double line = std::min({look.border.width, size.width, size.height});
    const bool isFilled = look.fillColor.alpha > 0;
    if (!isFilled && line <= 0) return;
    const Rect box{line / 2, line / 2, size.width - line, size.height - line};
    const double radiusX = std::min(look.border.horizontalCornerRadius, box.width / 2);
    const double radiusY = std::min(look.border.verticalCornerRadius, box.height / 2);
    content.save();
    content.fillColor(look.fillColor);
    content.strokeColor(look.lineColor);
    content.number(line).op("w");
    content.roundedRectangle(box, radiusX, radiusY);
    content.op(!isFilled ? "S" : line > 0 ? "B" : "f");
    content.restore();
}

/// Returns whether the text needs the font resource.
bool drawText(ContentStream& content, const AnnotationLook& look, const Size& size,
              const std::string& contents) {
    const std::string text = shownText(contents);
    if (text.empty()) return false;
    const double border = look.border.width;
    const Rect inner{kTextInset, border, size.width - 2 * kTextInset, size.height - 2 * border};
    const auto face = faceFor(text);
    const TextLayout layout =
        layOut(text, *face, look.fontSize, std::max(inner.width, 1.0), std::max(inner.height, 1.0));

    const double lineHeight = layout.fontSize * TextFace::kLineHeight;
    const double used = static_cast<double>(layout.lines.size()) * lineHeight;
    const double top = inner.y + inner.height - std::max(0.0, (inner.height - used) / 2);
    double baseline = top - layout.fontSize * (TextFace::kAscent + TextFace::kLineHeight - 1);
    content.save();
    content.rectangle({border, border, size.width - 2 * border, size.height - 2 * border});
    content.op("W n");
    content.fillColor(look.textColor);
    for (const std::string& line : layout.lines) {
        if (!line.empty()) face->show(content, line, inner.x, baseline, layout.fontSize);
        baseline -= lineHeight;
    }
    content.restore();
    return face->usesHelvetica();
}

void writeEntries(AnnotationLook& look) {
    const Color& fill = look.fillColor;
    look.object.replaceKey("/C",
                           fill.alpha > 0 ? pdfNumbers({fill.red, fill.green, fill.blue}) : pdfNumbers({}));
    QPDFObjectHandle border = QPDFObjectHandle::newDictionary();
    border.replaceKey("/Type", QPDFObjectHandle::newName("/Border"));
    border.replaceKey("/S", QPDFObjectHandle::newName("/S"));
    border.replaceKey("/W", QPDFObjectHandle::newReal(pdfNumber(look.border.width)));
    look.object.replaceKey("/BS", border);
    look.object.replaceKey("/Border", pdfNumbers({look.border.horizontalCornerRadius,
                                                  look.border.verticalCornerRadius, look.border.width}));
    ContentStream appearance;
    appearance.strokeColor(look.lineColor);
    appearance.fillColor(look.textColor);
    appearance.raw("/Helv ");
    appearance.number(look.fontSize).op("Tf");
    look.object.replaceKey("/DA", QPDFObjectHandle::newString(appearance.text()));
}

} // namespace

FreeTextAppearance freeTextAppearance(AnnotationLook& look, PdfDocument::State& document) {
    const PdfRect rect = look.rect.normalized();
    const Size size{rect.x2 - rect.x1, rect.y2 - rect.y1};
    ContentStream content;
    QPDFObjectHandle resources = QPDFObjectHandle::newDictionary();
    if (size.width > 0 && size.height > 0) {
        drawBox(content, look, size);
        if (drawText(content, look, size, look.contents())) {
            QPDFObjectHandle fonts = QPDFObjectHandle::newDictionary();
            fonts.replaceKey("/Helv", helveticaOf(document));
            resources.replaceKey("/Font", fonts);
        }
    }
    writeEntries(look);
    return {content.text(), resources};
}

} // namespace norvane
