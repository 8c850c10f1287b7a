#pragma once

#include <norvane/platform/Data.h>
#include <norvane/signature/Image.h>

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace norvane {

/// Pictures that tabs show, decoded once for all tabs that show the same one. One thread.
class DecodedImages {
  public:
    /// Nothing when the bytes are no PNG.
    std::optional<Image> imageOf(const Data& png);

  private:
    static constexpr std::size_t kCapacity = 16; // signatures and initials of those who sign one envelope
    std::vector<std::pair<Data, Image>> images_;
};

} // namespace norvane
