#pragma once

#include <norvane/model/NVMEnvelopeDefinition.h>

#include <cstdint>
#include <optional>
#include <string>

namespace norvane {

/// How a tab's label matches a key of the host's defaults; any other number matches nothing.
inline constexpr std::uint64_t kLabelIsKey = 0;
inline constexpr std::uint64_t kLabelEqualsKeyIgnoringCase = 1;
inline constexpr std::uint64_t kLabelContainsKey = 2;

/// The value that one key in hand gives a tab of that label. With `kLabelIsKey` the key plays no part: the
/// label is looked up.
std::optional<std::string> valueForTabLabel(const std::optional<std::string>& label, const std::string& key,
                                            std::uint64_t comparison, const TabValueDefaults& defaults);

/// The value that the last of all matching keys gives it.
std::optional<std::string> valueForTabLabel(const std::optional<std::string>& label, std::uint64_t comparison,
                                            const TabValueDefaults& defaults);

} // namespace norvane
