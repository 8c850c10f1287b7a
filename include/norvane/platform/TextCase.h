#pragma once

#include <string>
#include <string_view>

namespace norvane {

/// The text in lower case by the rules of no particular language. Ill-formed UTF-8 becomes U+FFFD.
std::string lowercased(std::string_view text);

} // namespace norvane
