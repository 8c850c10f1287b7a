#pragma once

#include <norvane/pdf/PdfPage.h>
#include <norvane/platform/Data.h>
#include <norvane/platform/Result.h>
#include <norvane/signature/Image.h>

#include <cstddef>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace norvane {

/// An image ready to be placed in a document any number of times.
class PdfImage {
  public:
    PdfImage() = default; ///< no image; placing it draws nothing
    bool isNull() const { return image_.isNull(); }
    const Image& image() const { return image_; }

  private:
    friend class PdfDocument;
    explicit PdfImage(Image image)
        : image_(std::move(image)) {}
    Image image_;
};

/// A PDF in memory: its pages, and the annotations that are added to them. Pages are numbered from 1. Safe to
/// use from several threads, together with its pages and annotations; `lock` keeps several changes together.
///
/// Only sound files are opened: whatever would have to be repaired by guessing is refused, because a repaired
/// contract may lack pages. Streams (page contents, images) are passed on as they are, never decoded.
class PdfDocument {
  public:
    static constexpr std::size_t kMaximumBytes = 100u << 20;
    static constexpr std::size_t kMaximumPages = 5000;
    static constexpr std::size_t kMaximumObjects = 1'000'000;
    /// Of all compressed object streams together, inflated.
    static constexpr std::size_t kMaximumObjectStreamBytes = 32u << 20;

    /// Opens a document; encrypted ones are refused.
    static Result<std::shared_ptr<PdfDocument>> open(const Data& bytes);
    /// All pages of the documents, in order, in one new document, with their annotations and form fields.
    /// Outlines, page labels and document-level information stay behind. The documents given do not change.
    static Result<std::shared_ptr<PdfDocument>>
    join(const std::vector<std::shared_ptr<PdfDocument>>& documents);

    ~PdfDocument();
    PdfDocument(const PdfDocument&) = delete;
    PdfDocument& operator=(const PdfDocument&) = delete;

    std::size_t pageCount() const;
    /// Pages of each document that this one was joined from, in order; of an opened document, its own.
    std::vector<std::size_t> sourcePageCounts() const;
    /// The page with that number, from 1; an error when there is none.
    Result<PdfPage> page(std::size_t number) const;
    /// Copies all pages of `other`, which must be another document, so that `position` pages stay ahead of
    /// them; a position beyond the end appends. Nothing changes on error.
    Failure insertDocument(const PdfDocument& other, std::size_t position);

    /// Whether this document, or one that it was joined from, carries a digital signature. `save` writes the
    /// file anew, which makes such signatures invalid: who must keep them keeps the original bytes.
    bool hasDigitalSignatures() const;

    /// The image for placing it in this document: lossless, with its transparency. It is encoded when the
    /// document is saved, if an annotation shows it then; the same pixels are stored once, however often and
    /// in however many buffers they are given.
    PdfImage imageFor(const Image& image) const { return PdfImage(image); }

    /// The document as it is now. The same document and changes give the same bytes.
    Result<Data> save() const;

    /// Held while several changes belong together; saving and other threads' changes wait for it.
    [[nodiscard]] std::unique_lock<std::recursive_mutex> lock() const;

    struct State;

  private:
    explicit PdfDocument(std::shared_ptr<State> state);
    std::shared_ptr<State> state_;
};

} // namespace norvane
