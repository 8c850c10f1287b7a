#pragma once

#include <string_view>

namespace norvane {

/// Domain of errors of the PDF engine; the code is a `PdfErrorCode`.
inline constexpr std::string_view kPdfErrorDomain = "NorvanePdfErrorDomain";
/// User-information key: the object at fault ("object 12 0"), where known.
inline constexpr std::string_view kPdfObjectKey = "pdfObject";
/// User-information key: what the parser found wrong.
inline constexpr std::string_view kPdfDetailKey = "pdfDetail";

enum class PdfErrorCode {
    Damaged = 1,   ///< no PDF, or one that could only be read by guessing
    TooLarge = 2,  ///< beyond one of the bounds of `PdfDocument`
    Encrypted = 3, ///< protected, which the engine does not open
    NoSuchPage = 4,
};

} // namespace norvane
