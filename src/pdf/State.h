#pragma once

#include "src/pdf/AnnotationLook.h"

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
    std::vector<std::shared_ptr<AnnotationLook>> staleLooks; ///< in the order in which they first changed

    std::size_t pageNumberOf(const QPDFObjectHandle& page) const;
    /// The image as an object of the document; the same pixels give the same object.
    QPDFObjectHandle imageObject(const Image& image);
    void markStale(const std::shared_ptr<AnnotationLook>& look);
    /// Brings the annotations' appearances up to date. Throws what qpdf throws.
    void drawStaleLooks();
};

struct PdfPage::State {
    std::shared_ptr<PdfDocument::State> document;
    QPDFObjectHandle page;
};

struct PdfAnnotation::State {
    std::shared_ptr<PdfDocument::State> document;
    QPDFObjectHandle page;
    std::shared_ptr<AnnotationLook> look;
    bool isOnPage = false; ///< in the page's list
};

/// The media box of a page, normalised; US letter where the file gives no usable one.
PdfRect mediaBoxOf(QPDFObjectHandle page);
QPDFObjectHandle pdfRectangle(const PdfRect& rect);
QPDFObjectHandle pdfNumbers(std::initializer_list<double> values);

} // namespace norvane
