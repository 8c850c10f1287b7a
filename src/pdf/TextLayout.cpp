#include "src/pdf/TextLayout.h"

#include <unicode/unistr.h>

#include <algorithm>

namespace norvane {
namespace {

constexpr double kSmallestFont = 4;
constexpr double kFontStep = 0.5;

/// A piece between two chances to break a line, with the blanks that follow it.
struct Piece {
    std::string text;
    double width = 0; ///< thousandths, without trailing blanks
    double advance = 0;
    bool endsLine = false;
};

std::size_t characterLength(const std::string& text, std::size_t position) {
    std::size_t end = position + 1;
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        ++end;
    return end - position;
}

std::vector<Piece> piecesOf(const std::string& text, const TextFace& face) {
    std::vector<Piece> pieces;
    std::size_t position = 0;
    const double blank = face.width(" ");
    while (position < text.size()) {
        const std::size_t wordEnd = std::min(text.find_first_of(" \n", position), text.size());
        const std::size_t end = std::min(text.find_first_not_of(' ', wordEnd), text.size());
        Piece piece;
        piece.text = text.substr(position, end - position);
        piece.width = face.width(text.substr(position, wordEnd - position));
        piece.advance = piece.width + blank * static_cast<double>(end - wordEnd);
        piece.endsLine = end < text.size() && text[end] == '\n';
        position = piece.endsLine ? end + 1 : end;
        pieces.push_back(std::move(piece));
    }
    return pieces;
}

class LineBreaker {
  public:
    LineBreaker(const TextFace& face, double width)
        : face_(face)
        , width_(width) {}

    std::vector<std::string> lines(const std::vector<Piece>& pieces) {
        for (const Piece& piece : pieces) {
            if (!line_.empty() && used_ + piece.width > width_) endLine();
            if (piece.width > width_)
                addByCharacter(piece.text);
            else
                add(piece.text, piece.advance);
            if (piece.endsLine) endLine();
        }
        endLine();
        return std::move(lines_);
    }

  private:
    void add(const std::string& text, double advance) {
        line_ += text;
        used_ += advance;
    }

    void addByCharacter(const std::string& text) {
        for (std::size_t i = 0; i < text.size();) {
            const std::string character = text.substr(i, characterLength(text, i));
            const double width = face_.width(character);
            if (!line_.empty() && used_ + width > width_) endLine();
            add(character, width);
            i += character.size();
        }
    }

    void endLine() {
        while (!line_.empty() && line_.back() == ' ')
            line_.pop_back();
        lines_.push_back(std::move(line_));
        line_.clear();
        used_ = 0;
    }

    const TextFace& face_;
    double width_;
    std::string line_;
    double used_ = 0;
    std::vector<std::string> lines_;
};

} // namespace

TextLayout layOut(const std::string& text, const TextFace& face, double fontSize, double width,
                  double height) {
    const std::vector<Piece> pieces = piecesOf(text, face);
    double size = fontSize;
    while (true) {
        // Rounding must not break a line that was measured to fit exactly.
        auto lines = LineBreaker(face, width / size * 1000 + 0.5).lines(pieces);
        const double used = static_cast<double>(lines.size()) * size * TextFace::kLineHeight;
        if (used <= height || size <= kSmallestFont) return {size, std::move(lines)};
        size = std::max(kSmallestFont, size - kFontStep);
    }
}

std::string shownText(const std::string& text) {
    icu::UnicodeString characters = icu::UnicodeString::fromUTF8(
        {text.data(), static_cast<int32_t>(std::min(text.size(), kMaximumShownText))});
    characters.findAndReplace("\r\n", "\n").findAndReplace("\r", "\n").findAndReplace("\t", " ");
    std::string shown;
    icu::UnicodeString kept;
    for (int32_t i = 0; i < characters.length(); i = characters.moveIndex32(i, 1)) {
        const UChar32 character = characters.char32At(i);
        const bool isControl = character < 0x20 || (character >= 0x7F && character < 0xA0);
        if (!isControl || character == '\n') kept.append(character);
    }
    return kept.toUTF8String(shown);
}

} // namespace norvane
