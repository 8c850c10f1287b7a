#include "src/pdf/BoundedInflate.h"
#include "src/pdf/CrossReferenceSection.h"
#include "src/pdf/InputBounds.h"
#include "src/pdf/PdfErrors.h"

#include <norvane/pdf/PdfDocument.h>

#include <algorithm>
#include <set>

namespace norvane {
namespace {

constexpr std::size_t kMaximumSections = 10'000;

/// Follows the sections from the newest to the oldest and remembers where objects lie, every place that any
/// section gives an object, and which objects are said to hold others.
class CrossReferenceWalk {
  public:
    explicit CrossReferenceWalk(std::string_view file)
        : reader_(file) {}

    Failure run() {
        std::vector<std::size_t> pending{reader_.startOfNewest()};
        std::set<std::size_t> visited;
        while (!pending.empty()) {
            const std::size_t offset = pending.back();
            pending.pop_back();
            if (!visited.insert(offset).second) continue;
            if (visited.size() > kMaximumSections) return pdfError(PdfErrorCode::TooLarge);
            CrossReferenceSection section = reader_.read(offset);
            if (section.isEncrypted) return pdfError(PdfErrorCode::Encrypted);
            if (section.failure) return section.failure;
            if (auto failure = add(section.entries)) return failure;
            pending.insert(pending.end(), section.olderSections.begin(), section.olderSections.end());
        }
        return checkObjectStreams();
    }

  private:
    Failure add(const std::vector<CrossReferenceEntry>& entries) {
        for (const auto& entry : entries) {
            if (entry.isInObjectStream)
                objectStreams_.insert(entry.position);
            else
                objects_.push_back(entry);
        }
        if (objects_.size() > 2 * PdfDocument::kMaximumObjects)
            return pdfError(PdfErrorCode::TooLarge, "too many objects");
        return {};
    }

    Failure checkObjectStreams() const {
        std::size_t remaining = PdfDocument::kMaximumObjectStreamBytes;
        std::set<std::size_t> measured;
        for (const auto& object : objects_) {
            if (!objectStreams_.contains(object.number) || !measured.insert(object.position).second) continue;
            const auto size = reader_.inflatedSizeAt(object.position, remaining);
            if (size.failure) return size.failure;
            remaining -= size.bytes;
        }
        return {};
    }

    CrossReferenceReader reader_;
    std::vector<CrossReferenceEntry> objects_;
    std::set<std::size_t> objectStreams_;
};

} // namespace

Failure checkCrossReferences(std::string_view file) {
    return guarded([&] { return CrossReferenceWalk(file).run(); });
}

} // namespace norvane
