#include "src/pdf/PageCopier.h"

#include "src/pdf/PdfErrors.h"

#include <norvane/platform/NVMException.h>

#include <qpdf/QPDFAcroFormDocumentHelper.hh>

#include <algorithm>
#include <optional>

namespace norvane {
namespace {

/// Copies pages one by one; taken back when it goes out of scope before `keep`.
class PageInsertion {
  public:
    PageInsertion(PdfDocument::State& target, PdfDocument::State& source, std::size_t position)
        : target_(target)
        , position_(position) {
        if (source.qpdf->getRoot().hasKey("/AcroForm")) {
            targetForm_.emplace(*target.qpdf);
            sourceForm_.emplace(*source.qpdf);
        }
    }
    PageInsertion(const PageInsertion&) = delete;
    PageInsertion& operator=(const PageInsertion&) = delete;
    ~PageInsertion() {
        if (isKept_) return;
        (void)guarded([&]() -> Failure {
            while (count_-- > 0)
                target_.qpdf->removePage(target_.qpdf->getAllPages()[position_]);
            return {};
        });
    }

    void copy(const QPDFObjectHandle& page) {
        QPDF& qpdf = *target_.qpdf;
        if (position_ < target_.pages.size())
            qpdf.addPageAt(page, true, target_.pages[position_]);
        else
            qpdf.addPage(page, false);
        const QPDFObjectHandle copied = qpdf.getAllPages()[position_ + count_++];
        if (targetForm_) targetForm_->fixCopiedAnnotations(copied, page, *sourceForm_);
    }

    void keep() { isKept_ = true; }

  private:
    PdfDocument::State& target_;
    std::size_t position_;
    std::size_t count_ = 0;
    bool isKept_ = false;
    std::optional<QPDFAcroFormDocumentHelper> targetForm_;
    std::optional<QPDFAcroFormDocumentHelper> sourceForm_;
};

/// The new document counts as one of its own between two others; inside another it belongs to that one.
void addSourceCount(std::vector<std::size_t>& counts, std::size_t position, std::size_t added) {
    auto next = counts.begin();
    for (std::size_t pages = 0; next != counts.end() && pages < position; ++next) {
        pages += *next;
        if (pages > position) {
            *next += added;
            return;
        }
    }
    counts.insert(next, added);
}

} // namespace

Failure insertPages(PdfDocument::State& target, const std::shared_ptr<PdfDocument::State>& source,
                    std::size_t position) {
    if (source.get() == &target)
        throw NVMException("IllegalOperationError", "A document cannot be inserted into itself.");
    const std::scoped_lock guard(target.mutex, source->mutex);
    if (target.pages.size() + source->pages.size() > PdfDocument::kMaximumPages)
        return pdfError(PdfErrorCode::TooLarge, "too many pages");
    const std::size_t place = std::min(position, target.pages.size());
    return guarded([&]() -> Failure {
        source->drawStaleLooks();
        PageInsertion insertion(target, *source, place);
        for (const QPDFObjectHandle& page : source->pages)
            insertion.copy(page);
        if (auto failure = firstWarning(*target.qpdf)) return failure;
        insertion.keep();
        target.pages = target.qpdf->getAllPages();
        addSourceCount(target.sourcePageCounts, place, source->pages.size());
        target.hasDigitalSignatures = target.hasDigitalSignatures || source->hasDigitalSignatures;
        target.sources.push_back(source);
        return {};
    });
}

} // namespace norvane
