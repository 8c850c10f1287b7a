#pragma once

#include "src/pdf/TextFace.h"

#include <string>
#include <vector>

namespace norvane {

struct TextLayout {
    double fontSize = 0;
    std::vector<std::string> lines;
};

/// The longest text that an annotation shows, in bytes; more would not fit on any page.
inline constexpr std::size_t kMaximumShownText = 16'384;

/// Breaks the text into lines no wider than the box. When they are higher than the box, the font shrinks by
/// half points, down to 4 points, until they fit.
TextLayout layOut(const std::string& text, const TextFace& face, double fontSize, double width,
                  double height);

/// The text with line breaks of one kind, no control characters, valid as UTF-8, and not too long.
std::string shownText(const std::string& text);

} // namespace norvane
