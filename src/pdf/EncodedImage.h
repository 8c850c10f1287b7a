#pragma once

#include <norvane/signature/Image.h>

#include <memory>
#include <string>

namespace norvane {

/// An image's samples, deflated as a PDF holds them.
struct EncodedImage {
    std::string colors; ///< three bytes a pixel, or one where all pixels are grey, as most ink is
    std::string alpha;  ///< empty when every pixel is opaque
    bool isGrey = true;
    std::string digest; ///< of the samples and the width: equal for equal pixels
};

/// Deflating costs more than everything else that is done to put a signature on a page: images whose pixels
/// are still in use keep what was made of them, in whatever documents they are placed. Any thread.
std::shared_ptr<const EncodedImage> encodedImage(const Image& image);

} // namespace norvane
