#include "src/pdf/HelveticaWidths.h"
#include "src/pdf/TextFace.h"

#include <qpdf/QUtil.hh>

namespace norvane {
namespace {

std::string encoded(const std::string& text) {
    std::string bytes;
    QUtil::utf8_to_win_ansi(text, bytes, ' ');
    return bytes;
}

class HelveticaFace final : public TextFace {
  public:
    double width(const std::string& text) const override {
        double sum = 0;
        for (const char byte : encoded(text))
            sum += helveticaWidth(static_cast<unsigned char>(byte));
        return sum;
    }

    void show(ContentStream& content, const std::string& line, double x, double y,
              double fontSize) const override {
        content.raw("BT\n/Helv ");
        content.number(fontSize).op("Tf");
        content.number(x).number(y).op("Td");
        std::string literal = "(";
        for (const char byte : encoded(line)) {
            if (byte == '(' || byte == ')' || byte == '\\') literal += '\\';
            literal += byte;
        }
        content.raw(literal + ") Tj\nET\n");
    }

    bool usesHelvetica() const override { return true; }
};

} // namespace

bool isHelveticaText(const std::string& text) {
    std::string bytes;
    return QUtil::utf8_to_win_ansi(text, bytes, ' ');
}

std::unique_ptr<TextFace> makeHelveticaFace() { return std::make_unique<HelveticaFace>(); }

std::unique_ptr<TextFace> faceFor(const std::string& text) {
    return isHelveticaText(text) ? makeHelveticaFace() : makeOutlineFace();
}

} // namespace norvane
