#pragma once

#include <string>
#include <string_view>

/// Text of protocols: other rules of case and white space than those of languages.
namespace norvane {

/// 0x00 to 0x1F and 0x7F.
bool isAsciiControl(char c);
bool asciiEqualsIgnoringCase(std::string_view a, std::string_view b);
std::string asciiLowercased(std::string_view text);
/// Without blanks, tabs and line ends on either side.
std::string_view asciiTrimmed(std::string_view text);

} // namespace norvane
