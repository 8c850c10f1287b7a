#pragma once

#include "src/pdf/ContentStream.h"

#include <memory>
#include <string>

namespace norvane {

/// How text is measured and shown. Lengths are in thousandths of the font size.
class TextFace {
  public:
    virtual ~TextFace() = default;
    /// The width of a piece of one line (UTF-8).
    virtual double width(const std::string& text) const = 0;
    /// Draws one line from (x, y), its baseline's left end, in the fill colour.
    virtual void show(ContentStream& content, const std::string& line, double x, double y,
                      double fontSize) const = 0;
    /// Whether `show` selects the font resource "/Helv".
    virtual bool usesHelvetica() const = 0;

    static constexpr double kAscent = 0.75; ///< of the font size, above the baseline
    static constexpr double kLineHeight = 1.15;
};

/// The face for the text: Helvetica, which every viewer has, where its encoding holds every character; else
/// outlines, so that no character is lost whatever its script.
std::unique_ptr<TextFace> faceFor(const std::string& text);
std::unique_ptr<TextFace> makeHelveticaFace();
std::unique_ptr<TextFace> makeOutlineFace();
bool isHelveticaText(const std::string& text);

} // namespace norvane
