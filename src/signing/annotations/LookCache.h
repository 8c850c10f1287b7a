#pragma once

#include <norvane/signature/Image.h>

#include <cstddef>
#include <functional>
#include <list>
#include <mutex>
#include <string>
#include <utility>

namespace norvane {

/// The looks drawn last. Most tabs of a document look alike, and equal looks that share one buffer are put
/// into a document without being looked at again. Any thread may call.
class LookCache {
  public:
    /// The image drawn before under that key, else what `draw` gives.
    Image image(const std::string& key, const std::function<Image()>& draw);

  private:
    static constexpr std::size_t kCapacity = 32;     // looks of a page rarely differ in more than a few ways
    std::mutex mutex_;                               ///< guards `looks_`
    std::list<std::pair<std::string, Image>> looks_; ///< latest first
};

} // namespace norvane
