#include "src/signing/DecodedImages.h"

#include <algorithm>

namespace norvane {

std::optional<Image> DecodedImages::imageOf(const Data& png) {
    const auto known = std::find_if(images_.begin(), images_.end(),
                                    [&](const auto& entry) { return entry.first.view() == png.view(); });
    if (known != images_.end()) return known->second;
    auto image = Image::decodePng(png);
    if (!image) return std::nullopt;
    if (images_.size() == kCapacity) images_.erase(images_.begin());
    images_.emplace_back(png, *image);
    return *std::move(image);
}

} // namespace norvane
