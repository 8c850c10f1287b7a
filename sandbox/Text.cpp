#include "sandbox/Text.h"

#include <openssl/evp.h>
#include <openssl/rand.h>
#include <uuid/uuid.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <stdexcept>

namespace norvane::sandbox {

namespace {

int hexValue(char character) {
    if (isDigit(character)) return character - '0';
    const char lower = lowered(character);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

int base64Value(char character) {
    if (character >= 'A' && character <= 'Z') return character - 'A';
    if (character >= 'a' && character <= 'z') return character - 'a' + 26;
    if (isDigit(character)) return character - '0' + 52;
    if (character == '+') return 62;
    return character == '/' ? 63 : -1;
}

} // namespace

std::string lowered(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char character) { return lowered(character); });
    return result;
}

std::string_view trimmed(std::string_view text) {
    static constexpr std::string_view kBlanks = " \t\r\n";
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool equalsIgnoringCase(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char first, char second) { return lowered(first) == lowered(second); });
}

bool hasControls(std::string_view text) {
    return std::any_of(text.begin(), text.end(), [](char character) {
        const auto byte = static_cast<unsigned char>(character);
        return (byte < 32 && character != '\t') || byte == 127;
    });
}

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    for (;;) {
        const auto end = text.find(separator);
        pieces.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) return pieces;
        text.remove_prefix(end + 1);
    }
}

std::optional<unsigned long long> wholeNumber(std::string_view text) {
    unsigned long long value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || text.empty()) return std::nullopt;
    return value;
}

bool isUuid(std::string_view text) {
    if (text.size() != 36) return false;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const bool dash = index == 8 || index == 13 || index == 18 || index == 23;
        if (dash ? text[index] != '-' : hexValue(text[index]) < 0) return false;
    }
    return true;
}

std::string newUuid() {
    uuid_t bytes;
    char text[37];
    uuid_generate_random(bytes);
    uuid_unparse_lower(bytes, text);
    return text;
}

std::optional<std::string> percentDecoded(std::string_view text, bool plusIsBlank) {
    std::string result;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] != '%') {
            result += plusIsBlank && text[index] == '+' ? ' ' : text[index];
            continue;
        }
        if (index + 2 >= text.size()) return std::nullopt;
        const int high = hexValue(text[index + 1]);
        const int low = hexValue(text[index + 2]);
        if (high < 0 || low < 0) return std::nullopt;
        result += static_cast<char>(high * 16 + low);
        index += 2;
    }
    return result;
}

std::optional<std::string> base64Decoded(std::string_view text) {
    std::string result;
    unsigned bits = 0;
    int count = 0;
    std::size_t padding = 0;
    std::size_t digits = 0;
    for (const char character : text) {
        if (character == '\r' || character == '\n') continue;
        if (character == '=') {
            ++padding;
            continue;
        }
        const int value = base64Value(character);
        if (value < 0 || padding > 0) return std::nullopt;
        ++digits;
        bits = (bits << 6) | static_cast<unsigned>(value);
        count += 6;
        if (count < 8) continue;
        count -= 8;
        result += static_cast<char>((bits >> count) & 0xff);
    }
    if ((digits + padding) % 4 != 0 || padding > 2) return std::nullopt;
    return result;
}

std::string hexText(std::string_view bytes) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string result;
    for (const char character : bytes) {
        const auto byte = static_cast<unsigned char>(character);
        result += kDigits[byte >> 4];
        result += kDigits[byte & 15];
    }
    return result;
}

std::string sha256Hex(std::string_view bytes) {
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned length = 0;
    if (EVP_Digest(bytes.data(), bytes.size(), digest, &length, EVP_sha256(), nullptr) != 1)
        throw std::runtime_error("SHA-256 is not available");
    return hexText({reinterpret_cast<const char*>(digest), length});
}

std::string randomHex(std::size_t bytes) {
    std::string raw(bytes, '\0');
    if (RAND_bytes(reinterpret_cast<unsigned char*>(raw.data()), static_cast<int>(bytes)) != 1)
        throw std::runtime_error("no random bytes are to be had");
    return hexText(raw);
}

std::string nowText() { return timeText(std::chrono::system_clock::now()); }

std::string timeText(std::chrono::system_clock::time_point moment) {
    const auto now = std::chrono::floor<std::chrono::milliseconds>(moment);
    const auto seconds = std::chrono::floor<std::chrono::seconds>(now);
    const std::time_t time = std::chrono::system_clock::to_time_t(seconds);
    std::tm parts{};
    gmtime_r(&time, &parts);
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02dT%02d:%02d:%02d.%03dZ", parts.tm_year + 1900,
                  parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec,
                  static_cast<int>((now - seconds).count()));
    return buffer;
}

} // namespace norvane::sandbox
