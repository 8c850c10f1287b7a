#include "src/signing/annotations/LookCache.h"

#include <algorithm>

namespace norvane {

Image LookCache::image(const std::string& key, const std::function<Image()>& draw) {
    {
        const std::lock_guard lock(mutex_);
        const auto found =
            std::find_if(looks_.begin(), looks_.end(), [&](const auto& look) { return look.first == key; });
        if (found != looks_.end()) {
            looks_.splice(looks_.begin(), looks_, found);
            return looks_.front().second;
        }
    }
    const Image drawn = draw();
    const std::lock_guard lock(mutex_);
    looks_.emplace_front(key, drawn);
    if (looks_.size() > kCapacity) looks_.pop_back();
    return drawn;
}

} // namespace norvane
