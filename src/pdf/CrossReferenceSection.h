#pragma once

#include "src/pdf/BoundedInflate.h"

#include <norvane/platform/Result.h>

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>

#include <memory>
#include <string_view>
#include <vector>

namespace norvane {

struct CrossReferenceEntry {
    std::size_t number = 0;
    std::size_t position = 0; ///< in the file, or the number of the object stream that holds the object
    bool isInObjectStream = false;
};

/// One table or stream of the chain that tells where objects lie.
struct CrossReferenceSection {
    std::vector<CrossReferenceEntry> entries; ///< of objects in use
    std::vector<std::size_t> olderSections;   ///< positions in the file
    bool isEncrypted = false;
    Failure failure;
};

/// Reads sections straight from the bytes of a file, inflating nothing beyond the bounds of a document. All
/// operations may throw what qpdf throws.
class CrossReferenceReader {
  public:
    explicit CrossReferenceReader(std::string_view file);

    /// Where the chain begins. Throws when the file does not say.
    std::size_t startOfNewest() const;
    CrossReferenceSection read(std::size_t position) const;
    /// The inflated size of the stream object at the position; an object that is no stream has none.
    InflatedSize inflatedSizeAt(std::size_t position, std::size_t limit) const;

  private:
    struct StreamObject {
        QPDFObjectHandle dictionary;
        std::size_t dataStart = 0; ///< 0 when no stream data follows the dictionary
    };

    CrossReferenceSection readTable(std::size_t position) const;
    CrossReferenceSection readStream(std::size_t position) const;
    void readEntries(QPDFObjectHandle dictionary, std::string_view data,
                     CrossReferenceSection& section) const;
    static void readLinks(QPDFObjectHandle dictionary, CrossReferenceSection& section);
    StreamObject objectAt(std::size_t position) const;
    QPDFObjectHandle parse(std::size_t position, std::size_t& end) const;

    std::string_view file_; ///< from the header on: positions count from there
    std::shared_ptr<QPDF> scratch_;
};

} // namespace norvane
