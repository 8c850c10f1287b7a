#include "src/pdf/CrossReferenceSection.h"

#include "src/pdf/PdfErrors.h"

#include <norvane/pdf/PdfDocument.h>

#include <qpdf/Buffer.hh>
#include <qpdf/BufferInputSource.hh>
#include <qpdf/QPDFTokenizer.hh>

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <stdexcept>

namespace norvane {
namespace {

constexpr std::size_t kTailBytes = 1054; // where qpdf, too, looks for "startxref"

bool isSpace(char c) {
    return c == ' ' || c == '\n' || c == '\r' || c == '\t' || c == '\f' || c == '\v' || c == '\0';
}

std::size_t skipSpace(std::string_view text, std::size_t position) {
    while (position < text.size() && isSpace(text[position]))
        ++position;
    return position;
}

/// Reads a decimal number at the position, after white space, and moves past it.
bool readNumber(std::string_view text, std::size_t& position, std::size_t& number) {
    const std::size_t start = skipSpace(text, position);
    if (start >= text.size()) return false;
    const auto [end, error] = std::from_chars(text.data() + start, text.data() + text.size(), number);
    position = static_cast<std::size_t>(end - text.data());
    return error == std::errc();
}

std::array<std::size_t, 3> widthsOf(QPDFObjectHandle dictionary) {
    std::array<std::size_t, 3> widths{};
    QPDFObjectHandle array = dictionary.getKey("/W");
    for (int i = 0; i < 3; ++i) {
        long long width = 0;
        const bool isNumber =
            array.isArray() && i < array.getArrayNItems() && array.getArrayItem(i).getValueAsInt(width);
        if (!isNumber || width < 0 || width > 8) throw std::runtime_error("wrong cross-reference widths");
        widths[static_cast<std::size_t>(i)] = static_cast<std::size_t>(width);
    }
    if (widths[0] + widths[1] + widths[2] == 0) throw std::runtime_error("wrong cross-reference widths");
    return widths;
}

/// First number and count of each run of objects.
std::vector<std::pair<std::size_t, std::size_t>> rangesOf(QPDFObjectHandle dictionary) {
    std::vector<long long> numbers{0, 0};
    QPDFObjectHandle index = dictionary.getKey("/Index");
    if (index.isArray()) {
        numbers.assign(static_cast<std::size_t>(index.getArrayNItems()) / 2 * 2, 0);
        for (std::size_t i = 0; i < numbers.size(); ++i)
            index.getArrayItem(static_cast<int>(i)).getValueAsInt(numbers[i]);
    } else {
        dictionary.getKey("/Size").getValueAsInt(numbers[1]);
    }
    std::vector<std::pair<std::size_t, std::size_t>> ranges;
    for (std::size_t i = 0; i < numbers.size(); i += 2) {
        constexpr long long kHighest = std::numeric_limits<int>::max();
        if (std::clamp(numbers[i], 0LL, kHighest) != numbers[i] || numbers[i + 1] < 0)
            throw std::runtime_error("wrong cross-reference index");
        ranges.emplace_back(numbers[i], numbers[i + 1]);
    }
    return ranges;
}

} // namespace

CrossReferenceReader::CrossReferenceReader(std::string_view file)
    : scratch_(QPDF::create()) {
    const std::size_t header = file.substr(0, 1024).find("%PDF-");
    if (header == std::string_view::npos) throw std::runtime_error("can't find PDF header");
    file_ = file.substr(header);
    scratch_->setSuppressWarnings(true);
}

std::size_t CrossReferenceReader::startOfNewest() const {
    const std::size_t tail = file_.size() > kTailBytes ? file_.size() - kTailBytes : 0;
    std::size_t position = file_.rfind("startxref");
    std::size_t start = 0;
    if (position == std::string_view::npos || position < tail)
        throw std::runtime_error("can't find startxref");
    position += std::string_view("startxref").size();
    if (!readNumber(file_, position, start)) throw std::runtime_error("startxref without position");
    return start;
}

CrossReferenceSection CrossReferenceReader::read(std::size_t position) const {
    const std::size_t start = skipSpace(file_, position);
    if (start >= file_.size()) throw std::runtime_error("cross-reference section outside the file");
    return file_.substr(start, 4) == "xref" ? readTable(start + 4) : readStream(start);
}

CrossReferenceSection CrossReferenceReader::readTable(std::size_t position) const {
    CrossReferenceSection section;
    std::size_t first = 0;
    std::size_t count = 0;
    while (readNumber(file_, position, first) && readNumber(file_, position, count)) {
        for (std::size_t i = 0; i < count; ++i) {
            std::size_t offset = 0;
            std::size_t generation = 0;
            if (!readNumber(file_, position, offset) || !readNumber(file_, position, generation))
                throw std::runtime_error("wrong cross-reference table");
            position = skipSpace(file_, position);
            if (file_.substr(position, 1) == "n") section.entries.push_back({first + i, offset, false});
            ++position;
            if (section.entries.size() > PdfDocument::kMaximumObjects)
                throw std::runtime_error("too many objects");
        }
    }
    const std::size_t trailer = skipSpace(file_, position);
    if (file_.substr(trailer, 7) != "trailer")
        throw std::runtime_error("cross-reference table without trailer");
    std::size_t end = 0;
    readLinks(parse(trailer + 7, end), section);
    return section;
}

CrossReferenceSection CrossReferenceReader::readStream(std::size_t position) const {
    CrossReferenceSection section;
    StreamObject object = objectAt(position);
    long long length = 0;
    if (object.dataStart == 0 || !object.dictionary.getKey("/Length").getValueAsInt(length) || length < 0 ||
        static_cast<std::size_t>(length) > file_.size() - object.dataStart)
        throw std::runtime_error("cross-reference section is no stream");
    const std::string_view raw = file_.substr(object.dataStart, static_cast<std::size_t>(length));
    const auto widths = widthsOf(object.dictionary);
    // A predictor takes one byte a row more.
    const std::size_t rowBytes = widths[0] + widths[1] + widths[2] + 1;
    section.failure =
        checkInflatedSize(object.dictionary, raw, PdfDocument::kMaximumObjects * rowBytes).failure;
    if (section.failure) return section;

    QPDFObjectHandle stream = scratch_->newStream();
    stream.replaceStreamData(std::string(raw), object.dictionary.getKey("/Filter"),
                             object.dictionary.getKey("/DecodeParms"));
    const auto data = stream.getStreamData(qpdf_dl_generalized);
    readEntries(object.dictionary, {reinterpret_cast<const char*>(data->getBuffer()), data->getSize()},
                section);
    readLinks(object.dictionary, section);
    return section;
}

void CrossReferenceReader::readEntries(QPDFObjectHandle dictionary, std::string_view data,
                                       CrossReferenceSection& section) const {
    const auto widths = widthsOf(dictionary);
    const std::size_t rowBytes = widths[0] + widths[1] + widths[2];
    for (const auto& [first, count] : rangesOf(dictionary)) {
        for (std::size_t i = 0; i < count && data.size() >= rowBytes; ++i) {
            std::array<std::size_t, 3> fields{};
            for (std::size_t field = 0; field < 3; ++field) {
                for (std::size_t n = 0; n < widths[field]; ++n)
                    fields[field] = fields[field] << 8 | static_cast<unsigned char>(data[n]);
                data.remove_prefix(widths[field]);
            }
            const std::size_t kind = widths[0] == 0 ? 1 : fields[0];
            if (kind == 1 || kind == 2) section.entries.push_back({first + i, fields[1], kind == 2});
        }
    }
}

void CrossReferenceReader::readLinks(QPDFObjectHandle dictionary, CrossReferenceSection& section) {
    if (!dictionary.isDictionary()) throw std::runtime_error("cross-reference section without dictionary");
    // Not `hasKey`: what the entry refers to is not at hand here, and would count as missing.
    section.isEncrypted = dictionary.getDictAsMap().contains("/Encrypt");
    for (const char* key : {"/Prev", "/XRefStm"}) {
        long long position = 0;
        if (dictionary.getKey(key).getValueAsInt(position) && position > 0)
            section.olderSections.push_back(static_cast<std::size_t>(position));
    }
}

InflatedSize CrossReferenceReader::inflatedSizeAt(std::size_t position, std::size_t limit) const {
    const StreamObject object = objectAt(position);
    if (object.dataStart == 0) return {};
    std::string_view raw = file_.substr(object.dataStart);
    long long length = 0;
    if (QPDFObjectHandle(object.dictionary).getKey("/Length").getValueAsInt(length) && length >= 0)
        raw = raw.substr(0, static_cast<std::size_t>(length));
    return checkInflatedSize(object.dictionary, raw, limit);
}

CrossReferenceReader::StreamObject CrossReferenceReader::objectAt(std::size_t position) const {
    StreamObject object;
    std::size_t number = 0;
    std::size_t generation = 0;
    if (!readNumber(file_, position, number) || !readNumber(file_, position, generation))
        throw std::runtime_error("object not where it should be");
    position = skipSpace(file_, position);
    if (file_.substr(position, 3) != "obj") throw std::runtime_error("object not where it should be");
    object.dictionary = parse(position + 3, position);
    position = skipSpace(file_, position);
    if (!object.dictionary.isDictionary() || file_.substr(position, 6) != "stream") return object;
    position += 6;
    if (file_.substr(position, 1) == "\r") ++position;
    if (file_.substr(position, 1) == "\n") ++position;
    object.dataStart = std::min(position, file_.size());
    return object;
}

QPDFObjectHandle CrossReferenceReader::parse(std::size_t position, std::size_t& end) const {
    auto* bytes = const_cast<unsigned char*>(reinterpret_cast<const unsigned char*>(file_.data()));
    Buffer buffer(bytes, file_.size());
    auto input = std::make_shared<BufferInputSource>("cross-reference section", &buffer);
    input->seek(static_cast<qpdf_offset_t>(position), SEEK_SET);
    QPDFTokenizer tokenizer;
    bool isEmpty = false;
    auto object = QPDFObjectHandle::parse(input, "cross-reference section", tokenizer, isEmpty, nullptr,
                                          scratch_.get());
    end = static_cast<std::size_t>(input->tell());
    return object;
}

} // namespace norvane
