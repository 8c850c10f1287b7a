#pragma once

#include <norvane/pdf/PdfDocument.h>

#include <qpdf/QPDFObjectHandle.hh>

#include <string>

namespace norvane {

/// What an annotation shows. Changes only mark it as stale: it is drawn when the document is written, once,
/// however often it changed before. Guarded by the document's mutex.
struct AnnotationLook {
    enum class Kind { Nothing, FreeText, Image };

    QPDFObjectHandle object; ///< the annotation's dictionary
    PdfRect rect;            ///< as given, relative to the media box
    Point origin;            ///< bottom-left corner of the media box, as the file counts
    double fontSize = 12;
    PdfBorderStyle border;
    Color lineColor;
    Color textColor;
    Color fillColor{1, 1, 1, 0};
    PdfImage image;
    Rect imagePlace; ///< relative to the media box
    Kind kind = Kind::Nothing;
    bool isStale = false;
    QPDFObjectHandle appearance; ///< the normal appearance's stream, reused by each drawing

    /// The rectangle as the file holds it.
    PdfRect fileRect() const;
    std::string contents() const;
    void draw(PdfDocument::State& document);

  private:
    void drawImage(PdfDocument::State& document);
    void drawFreeText(PdfDocument::State& document);
    /// Replaces the appearance; the content is drawn in the coordinates of `box`, which covers the rectangle.
    void setAppearance(PdfDocument::State& document, const std::string& content, const PdfRect& box,
                       QPDFObjectHandle resources);
};

} // namespace norvane
