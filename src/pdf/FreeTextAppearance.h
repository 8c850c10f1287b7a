#pragma once

#include "src/pdf/State.h"
#include "src/pdf/TextLayout.h"

#include <string>

namespace norvane {

/// Space between an annotation's edge and its text at either side, in points.
inline constexpr double kTextInset = 5;

struct FreeTextAppearance {
    std::string content;
    QPDFObjectHandle resources;
};

/// Draws border, ground and contents; writes into the annotation the entries from which another program may
/// draw it again.
FreeTextAppearance freeTextAppearance(AnnotationLook& look, PdfDocument::State& document);

} // namespace norvane
