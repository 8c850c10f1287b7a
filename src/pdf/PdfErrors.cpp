#include "src/pdf/PdfErrors.h"

#include <qpdf/QPDFExc.hh>

namespace norvane {
namespace {

struct Wording {
    const char* description;
    const char* reason;
};

Wording wordingOf(PdfErrorCode code) {
    switch (code) {
    case PdfErrorCode::TooLarge:
        return {"The PDF is too large.", "PDF_TOO_LARGE"};
    case PdfErrorCode::Encrypted:
        return {"The PDF is encrypted.", "PDF_ENCRYPTED"};
    case PdfErrorCode::NoSuchPage:
        return {"The PDF has no such page.", "PDF_NO_SUCH_PAGE"};
    case PdfErrorCode::Damaged:
        break;
    }
    return {"The PDF is damaged.", "PDF_DAMAGED"};
}

NVMError pdfErrorOfQpdf(const QPDFExc& exception) {
    const bool isPassword = exception.getErrorCode() == qpdf_e_password;
    return pdfError(isPassword ? PdfErrorCode::Encrypted : PdfErrorCode::Damaged,
                    exception.getMessageDetail(), exception.getObject());
}

} // namespace

NVMError pdfError(PdfErrorCode code, const std::string& detail, const std::string& object) {
    const Wording wording = wordingOf(code);
    NVMError error = NVMError::make(std::string(kPdfErrorDomain), static_cast<std::int64_t>(code),
                                    wording.description, wording.reason);
    if (!object.empty()) error.userInfo.insert_or_assign(std::string(kPdfObjectKey), object);
    if (!detail.empty()) error.userInfo.insert_or_assign(std::string(kPdfDetailKey), detail);
    return error;
}

NVMError pdfErrorOf(const std::exception& exception) {
    if (const auto* qpdfException = dynamic_cast<const QPDFExc*>(&exception))
        return pdfErrorOfQpdf(*qpdfException);
    return pdfError(PdfErrorCode::Damaged, exception.what());
}

Failure firstWarning(QPDF& qpdf) {
    if (!qpdf.anyWarnings()) return {};
    const auto warnings = qpdf.getWarnings();
    return warnings.empty() ? pdfError(PdfErrorCode::Damaged) : pdfErrorOfQpdf(warnings.front());
}

} // namespace norvane
