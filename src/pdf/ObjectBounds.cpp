#include "src/pdf/InputBounds.h"
#include "src/pdf/PdfErrors.h"

#include <norvane/pdf/PdfDocument.h>

#include <qpdf/QPDFObjectHandle.hh>

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace norvane {
namespace {

constexpr std::size_t kMaximumPageTreeDepth = 200;
constexpr std::size_t kMaximumReferenceDepth = 5'000;

std::string nameOf(QPDFObjectHandle object) { return "object " + object.getObjGen().unparse(' '); }

Failure checkPageTree(QPDF& qpdf) {
    struct Node {
        QPDFObjectHandle object;
        std::size_t depth;
    };
    std::vector<Node> pending{{qpdf.getRoot().getKey("/Pages"), 0}};
    std::set<QPDFObjGen> visited;
    std::size_t pages = 0;
    while (!pending.empty()) {
        Node node = pending.back();
        pending.pop_back();
        QPDFObjectHandle kids = node.object.isDictionary() ? node.object.getKey("/Kids") : QPDFObjectHandle();
        if (!kids.isInitialized() || !kids.isArray())
            return pdfError(PdfErrorCode::Damaged, "page tree without pages", nameOf(node.object));
        if (node.depth > kMaximumPageTreeDepth)
            return pdfError(PdfErrorCode::TooLarge, "page tree too deep", nameOf(node.object));
        if (node.object.isIndirect() && !visited.insert(node.object.getObjGen()).second)
            return pdfError(PdfErrorCode::Damaged, "loop in the page tree", nameOf(node.object));
        for (int i = 0; i < kids.getArrayNItems(); ++i) {
            QPDFObjectHandle kid = kids.getArrayItem(i);
            if (!kid.isDictionary())
                return pdfError(PdfErrorCode::Damaged, "page is no dictionary", nameOf(node.object));
            if (kid.hasKey("/Kids"))
                pending.push_back({kid, node.depth + 1});
            else if (++pages > PdfDocument::kMaximumPages)
                return pdfError(PdfErrorCode::TooLarge, "too many pages");
        }
    }
    if (pages == 0) return pdfError(PdfErrorCode::Damaged, "no pages");
    return {};
}

/// Walks depth first, in the order in which qpdf copies objects between documents, without recursion.
class ReferenceDepth {
  public:
    Failure check(const QPDFObjectHandle& page) {
        isTop_ = true;
        enter(page);
        while (!path_.empty()) {
            if (path_.size() > kMaximumReferenceDepth)
                return pdfError(PdfErrorCode::TooLarge, "chain of references too long", nameOf(page));
            Level& level = path_.back();
            if (level.next == level.children.size()) {
                path_.pop_back();
            } else {
                const QPDFObjectHandle child = level.children[level.next++];
                enter(child);
            }
        }
        return {};
    }

  private:
    struct Level {
        std::vector<QPDFObjectHandle> children;
        std::size_t next = 0;
    };

    static bool isOfPageTree(const std::map<std::string, QPDFObjectHandle>& entries) {
        const auto type = entries.find("/Type");
        if (type == entries.end()) return false;
        QPDFObjectHandle name = type->second;
        return name.isNameAndEquals("/Page") || name.isNameAndEquals("/Pages");
    }

    /// What stands in the object itself and holds no others leads nowhere.
    static void add(QPDFObjectHandle child, Level& level) {
        const bool mayHold = child.isIndirect() || child.isArray() || child.isDictionary();
        if (mayHold) level.children.push_back(std::move(child));
    }

    void enter(QPDFObjectHandle object) {
        const bool isTop = std::exchange(isTop_, false);
        if (object.isIndirect() && !visited_.insert(object.getObjGen()).second) return;
        Level level;
        if (object.isArray()) {
            for (int i = 0; i < object.getArrayNItems(); ++i)
                add(object.getArrayItem(i), level);
        } else if (object.isDictionary() || object.isStream()) {
            const auto entries = (object.isStream() ? object.getDict() : object).getDictAsMap();
            // Copying stops at other pages and at the page tree.
            if (!isTop && object.isDictionary() && isOfPageTree(entries)) return;
            for (const auto& [key, value] : entries)
                add(value, level);
        }
        if (!level.children.empty()) path_.push_back(std::move(level));
    }

    bool isTop_ = false;
    std::set<QPDFObjGen> visited_;
    std::vector<Level> path_;
};

} // namespace

Failure checkObjectGraph(QPDF& qpdf) {
    return guarded([&]() -> Failure {
        if (auto failure = checkPageTree(qpdf)) return failure;
        ReferenceDepth depth;
        for (const auto& page : qpdf.getAllPages())
            if (auto failure = depth.check(page)) return failure;
        return {};
    });
}

} // namespace norvane
