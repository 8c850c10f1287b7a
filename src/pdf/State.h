#pragma once

#include <norvane/pdf/PdfDocument.h>

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>

#include <initializer_list>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace norvane {

/// Everything of a document. `mutex` guards all other members, and the states of its pages and annotations.
struct PdfDocument::State {
    /// Where the pixels of an image lie, and whether they still do.
    struct KnownBuffer {
        std::weak_ptr<const std::uint8_t[]> buffer;
        int objectNumber = 0;
    };
    using BufferKey = std::tuple<const std::uint8_t*, std::size_t, int, int>;

    mutable std::recursive_mutex mutex;
    Data bytes;
    std::shared_ptr<QPDF> qpdf = QPDF::create();
    std::vector<QPDFObjectHandle> pages;
    std::vector<std::size_t> sourcePageCounts;
    bool hasDigitalSignatures = false;
    /// Copied streams are still read from the documents that they came from.
    std::vector<std::shared_ptr<const State>> sources;

    QPDFObjectHandle helvetica; ///< uninitialised until the first free text
    std::map<BufferKey, KnownBuffer> imagesByBuffer;
    std::map<std::string, int> imagesByDigest;
    std::map<int, std::weak_ptr<PdfAnnotation::State>> annotations; ///< by object number
    std::set<int> pagesWithOwnAnnotations;

    std::size_t pageNumberOf(const QPDFObjectHandle& page) const;
};

struct PdfPage::State {
    std::shared_ptr<PdfDocument::State> document;
    QPDFObjectHandle page;
};

struct PdfAnnotation::State {
    std::shared_ptr<PdfDocument::State> document;
    QPDFObjectHandle page;
    QPDFObjectHandle object;
    PdfRect rect; ///< as given, relative to the media box
    Point origin; ///< bottom-left corner of the media box, as the file counts
    double fontSize = 12;
    PdfBorderStyle border;
    Color lineColor;
    Color textColor;
    Color fillColor{1, 1, 1, 0};
    bool isOnPage = false;       ///< in the page's list
    QPDFObjectHandle appearance; ///< the normal appearance's stream, reused by each refresh

    /// Replaces what the annotation shows; the content is drawn in the coordinates of `box`, which covers the
    /// annotation's rectangle.
    void setAppearance(const std::string& content, const PdfRect& box, QPDFObjectHandle resources);
};

/// The media box of a page, normalised; US letter where the file gives no usable one.
PdfRect mediaBoxOf(QPDFObjectHandle page);
QPDFObjectHandle pdfRectangle(const PdfRect& rect);
QPDFObjectHandle pdfNumbers(std::initializer_list<double> values);

} // namespace norvane
