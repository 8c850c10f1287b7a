#pragma once

#include <norvane/platform/Data.h>

#include <string>
#include <string_view>

namespace norvane {

enum class Base64Lines {
    None,
    SixtyFour, ///< lines of 64 characters, separated (not ended) by CR LF
};

/// Standard alphabet with padding.
std::string encodeBase64(std::string_view bytes, Base64Lines lines = Base64Lines::None);

/// The bytes of the text; characters outside the alphabet are skipped, "=" ends the text, a last lone
/// character (six bits) is dropped.
Data decodeBase64(std::string_view text);

} // namespace norvane
