#include <norvane/sdk/NVMAppearance.h>

#include <mutex>

namespace norvane {
namespace {

int hexDigit(char character) {
    if (character >= '0' && character <= '9') return character - '0';
    const char lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

NVMAppearance defaultAppearance() {
    return {*colorFromHexText(palette::kPrimaryDarkBlue), *colorFromHexText("#FFFFFF"),
            *colorFromHexText(palette::kSecondaryLightBlue)};
}

struct Present {
    std::mutex mutex;
    NVMAppearance appearance = defaultAppearance(); // guarded by mutex
};

Present& present() {
    static Present state;
    return state;
}

} // namespace

std::optional<Color> colorFromHexText(std::string_view text) {
    if (text.starts_with('#')) text.remove_prefix(1);
    if (text.starts_with("0x")) text.remove_prefix(2);
    if (text.size() != 6 && text.size() != 8) return std::nullopt;
    double channels[4] = {0, 0, 0, 1};
    for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
        const int high = hexDigit(text[i]);
        const int low = hexDigit(text[i + 1]);
        if (high < 0 || low < 0) return std::nullopt;
        channels[i / 2] = (high * 16 + low) / 255.0;
    }
    return Color{channels[0], channels[1], channels[2], channels[3]};
}

void NVMAppearance::applyDefaultAppearance() {
    const std::lock_guard lock(present().mutex);
    present().appearance = defaultAppearance();
}

NVMAppearance NVMAppearance::current() {
    const std::lock_guard lock(present().mutex);
    return present().appearance;
}

} // namespace norvane
