#include <norvane/platform/Base64.h>

#include <array>
#include <cstdint>

namespace norvane {
namespace {

constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::size_t kLineLength = 64;

constexpr std::array<std::int8_t, 256> makeValues() {
    std::array<std::int8_t, 256> values{};
    values.fill(-1);
    for (std::size_t i = 0; i < kAlphabet.size(); ++i) {
        values[static_cast<unsigned char>(kAlphabet[i])] = static_cast<std::int8_t>(i);
    }
    return values;
}

constexpr std::array<std::int8_t, 256> kValues = makeValues();

} // namespace

std::string encodeBase64(std::string_view bytes, Base64Lines lines) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4 + (lines == Base64Lines::None ? 0 : bytes.size() / 24));
    std::size_t column = 0;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        if (lines == Base64Lines::SixtyFour && column == kLineLength) {
            text += "\r\n";
            column = 0;
        }
        const auto byte = [&](std::size_t at) -> std::uint32_t {
            return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
        };
        const std::uint32_t bits = byte(i) << 16 | byte(i + 1) << 8 | byte(i + 2);
        text += kAlphabet[bits >> 18];
        text += kAlphabet[bits >> 12 & 63];
        text += i + 1 < bytes.size() ? kAlphabet[bits >> 6 & 63] : '=';
        text += i + 2 < bytes.size() ? kAlphabet[bits & 63] : '=';
        column += 4;
    }
    return text;
}

Data decodeBase64(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3 + 3);
    std::uint32_t bits = 0;
    int count = 0;
    for (const char character : text) {
        if (character == '=') break;
        const int value = kValues[static_cast<unsigned char>(character)];
        if (value < 0) continue;
        bits = bits << 6 | static_cast<std::uint32_t>(value);
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += static_cast<char>(bits >> count & 0xff);
        }
    }
    return Data(std::move(bytes));
}

} // namespace norvane
