#pragma once

#include <norvane/platform/Value.h>

#include <optional>
#include <string>
#include <string_view>

namespace norvane {

/// The text form of a settings dictionary in the credential store: {"settings":{...},"version":1}.
std::string archivedSettings(const Dictionary& settings);
/// Nothing when the text is no archive of a version that this kit knows.
std::optional<Dictionary> unarchivedSettings(std::string_view archive);

} // namespace norvane
