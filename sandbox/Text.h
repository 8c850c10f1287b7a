#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace norvane::sandbox {

/// Small tests on ASCII text, free of the locale.
inline bool isDigit(char character) { return character >= '0' && character <= '9'; }
inline bool isAlphanumeric(char character) {
    const char lower = static_cast<char>(character | 0x20);
    return isDigit(character) || (lower >= 'a' && lower <= 'z');
}
inline char lowered(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character + 32) : character;
}

std::string lowered(std::string_view text);
std::string_view trimmed(std::string_view text); ///< without blanks, tabs and line ends at both ends
bool equalsIgnoringCase(std::string_view left, std::string_view right);
bool hasControls(std::string_view text); ///< a byte below 32 other than the tab, or 127
std::vector<std::string> split(std::string_view text, char separator);

/// The whole text as a decimal number without sign; nothing when it is none or does not fit.
std::optional<unsigned long long> wholeNumber(std::string_view text);
bool isUuid(std::string_view text);
std::string newUuid(); ///< random, in lower case

/// Undoes percent escapes; nothing when one is broken. `plusIsBlank` as in query strings.
std::optional<std::string> percentDecoded(std::string_view text, bool plusIsBlank = false);
/// Undoes base64, passing over line ends; nothing when the text is not base64.
std::optional<std::string> base64Decoded(std::string_view text);
std::string hexText(std::string_view bytes);
std::string sha256Hex(std::string_view bytes);
/// As many random bytes from the system, written as hexadecimal digits.
std::string randomHex(std::size_t bytes);
/// The present moment as in 2025-03-04T05:06:07.000Z.
std::string nowText();
std::string timeText(std::chrono::system_clock::time_point moment); ///< in the same form

} // namespace norvane::sandbox
