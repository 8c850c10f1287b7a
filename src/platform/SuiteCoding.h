#pragma once

#include <norvane/platform/Value.h>

#include <optional>
#include <string>
#include <string_view>

namespace norvane {

/// A suite of user defaults as JSON text and back. What JSON cannot tell apart is written as an object of one
/// member whose key says what it is: "$date", and "$decimal" for a decimal number without a fraction;
/// "$dictionary" wraps a dictionary that itself looks like one of these.
std::string encodeSuite(const Dictionary& suite);
/// Nothing when the text is no suite.
std::optional<Dictionary> decodeSuite(std::string_view text);

} // namespace norvane
