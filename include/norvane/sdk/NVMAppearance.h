#pragma once

#include <norvane/platform/Geometry.h>

#include <optional>
#include <string_view>

namespace norvane {

/// Reads six or eight hexadecimal digits (red, green, blue, and alpha where given, else opaque); a leading
/// "#" or "0x" is dropped. Nothing when the text is none of these.
std::optional<Color> colorFromHexText(std::string_view text);

/// The kit's palette.
namespace palette {
inline constexpr std::string_view kPrimaryDarkBlue = "#1B2A4A";
inline constexpr std::string_view kSecondaryLightBlue = "#6FB1E0";
} // namespace palette

/// The look of the bars of the kit's screens, which views follow.
struct NVMAppearance {
    Color navigationBarTintColor;
    Color navigationBarTitleColor;
    Color barButtonItemTintColor;

    /// Makes the default look the present one. Any thread.
    static void applyDefaultAppearance();
    /// The present look; before the first set-up, the default one too.
    static NVMAppearance current();
};

} // namespace norvane
