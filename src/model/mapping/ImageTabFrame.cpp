#include "src/model/mapping/ImageTabFrame.h"

#include <algorithm>
#include <cmath>

namespace norvane {

std::int64_t wholePoints(field::Number number) {
    // No page is that large; what comes from outside must not overflow later sums.
    constexpr double kLimit = 1e12;
    if (!number || std::isnan(*number)) return 0;
    return static_cast<std::int64_t>(std::clamp(*number, -kLimit, kLimit));
}

std::int64_t scaledSide(field::Number stored, double defaultSide, double scale) {
    const double base = stored.value_or(defaultSide);
    const std::int64_t scaled = wholePoints(std::floor(scale * base));
    return scaled != 0 ? scaled : wholePoints(base);
}

} // namespace norvane
