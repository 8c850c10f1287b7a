#pragma once

#include "src/pdf/State.h"
#include "src/pdf/TextLayout.h"

#include <string>

namespace norvane {

/// Space between an annotation's edge and its text at either side, in points.
inline constexpr double kTextInset = 5;

/// Draws a free-text annotation and writes the entries from which another program may draw it again.
void drawFreeText(PdfAnnotation::State& state, const std::string& contents);

} // namespace norvane
