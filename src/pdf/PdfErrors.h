#pragma once

#include <norvane/pdf/PdfError.h>
#include <norvane/platform/Result.h>

#include <qpdf/QPDF.hh>

#include <exception>
#include <optional>
#include <string>

namespace norvane {

NVMError pdfError(PdfErrorCode code, const std::string& detail = {}, const std::string& object = {});
NVMError pdfErrorOf(const std::exception& exception);

/// The first thing that the parser had to guess, if anything.
Failure firstWarning(QPDF& qpdf);

/// Runs the work; whatever qpdf throws becomes an error.
template <class Work>
Failure guarded(const Work& work) {
    try {
        return work();
    } catch (const std::exception& exception) {
        return pdfErrorOf(exception);
    }
}

} // namespace norvane
