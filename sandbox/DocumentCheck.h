#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace norvane::sandbox {

struct PdfFindings {
    int pages = 0;
    std::string error; ///< empty when the file opens without a warning
    bool ok() const { return error.empty(); }
};

/// Opens a PDF and counts its pages without decoding its streams.
PdfFindings checkPdf(std::string_view bytes);

/// What is wrong with a PNG image: its frame, its checksums, sides over 8,192 pixels, data that does not
/// decode. Empty when it is whole.
std::string checkPng(std::string_view bytes);

} // namespace norvane::sandbox
