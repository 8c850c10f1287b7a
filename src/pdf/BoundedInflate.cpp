#include "src/pdf/BoundedInflate.h"

#include "src/pdf/PdfErrors.h"

#include <zlib.h>

#include <array>
#include <optional>
#include <string>

namespace norvane {
namespace {

/// The filter's name, empty when the stream has none; nothing when there are several, or when another object
/// holds it, which cannot be looked up yet.
std::optional<std::string> onlyFilterOf(QPDFObjectHandle dictionary) {
    QPDFObjectHandle filter = dictionary.getKey("/Filter");
    if (filter.isIndirect()) return std::nullopt;
    if (filter.isArray() && filter.getArrayNItems() == 1) filter = filter.getArrayItem(0);
    if (filter.isIndirect()) return std::nullopt;
    if (filter.isNull() || (filter.isArray() && filter.getArrayNItems() == 0)) return "";
    if (!filter.isName()) return std::nullopt;
    return filter.getName();
}

/// Counts what comes out, up to a little more than the limit; stops quietly where the data ends or is bad.
std::size_t countInflated(std::string_view raw, std::size_t limit) {
    z_stream stream{};
    if (inflateInit(&stream) != Z_OK) throw std::bad_alloc();
    std::array<Bytef, 65536> chunk{};
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(raw.data()));
    stream.avail_in = static_cast<uInt>(raw.size());
    std::size_t count = 0;
    int status = Z_OK;
    while (status == Z_OK && count <= limit) {
        stream.next_out = chunk.data();
        stream.avail_out = static_cast<uInt>(chunk.size());
        status = inflate(&stream, Z_NO_FLUSH);
        count += chunk.size() - stream.avail_out;
    }
    inflateEnd(&stream);
    return count;
}

} // namespace

InflatedSize checkInflatedSize(QPDFObjectHandle dictionary, std::string_view raw, std::size_t limit) {
    const auto filter = onlyFilterOf(dictionary);
    if (!filter || (*filter != "" && *filter != "/FlateDecode" && *filter != "/Fl"))
        return {0, pdfError(PdfErrorCode::Damaged, "unsupported filter of a structural stream")};
    const std::size_t bytes = filter->empty() ? raw.size() : countInflated(raw, limit);
    if (bytes > limit) return {bytes, pdfError(PdfErrorCode::TooLarge, "structural stream too large")};
    return {bytes, {}};
}

} // namespace norvane
