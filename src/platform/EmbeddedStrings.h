#pragma once

#include <span>
#include <string_view>

namespace norvane {

/// One file of resources/strings, put into the library when it is built.
struct EmbeddedStrings {
    std::string_view locale; ///< "en", "fr_CA"
    std::string_view json;
};

std::span<const EmbeddedStrings> embeddedStrings();

} // namespace norvane
