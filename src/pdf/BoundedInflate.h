#pragma once

#include <norvane/platform/Result.h>

#include <qpdf/QPDFObjectHandle.hh>

#include <cstddef>
#include <string_view>

namespace norvane {

struct InflatedSize {
    std::size_t bytes = 0;
    Failure failure;
};

/// How large the raw bytes of the stream with that dictionary get when decoded, without keeping them. Fails
/// beyond the limit, and for filters other than a single deflate, which structural streams do without.
InflatedSize checkInflatedSize(QPDFObjectHandle dictionary, std::string_view raw, std::size_t limit);

} // namespace norvane
