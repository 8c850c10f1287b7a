#include "src/platform/http/LruIndex.h"

namespace norvane {

void LruIndex::put(const std::string& key, std::uint64_t size) {
    erase(key);
    order_.push_front({key, size});
    places_.emplace(key, order_.begin());
    totalSize_ += size;
}

void LruIndex::touch(const std::string& key) {
    if (const auto place = places_.find(key); place != places_.end())
        order_.splice(order_.begin(), order_, place->second);
}

void LruIndex::erase(const std::string& key) {
    const auto place = places_.find(key);
    if (place == places_.end()) return;
    totalSize_ -= place->second->size;
    order_.erase(place->second);
    places_.erase(place);
}

std::vector<std::string> LruIndex::shrink(std::uint64_t capacity) {
    std::vector<std::string> removed;
    while (totalSize_ > capacity) {
        removed.push_back(order_.back().key);
        erase(removed.back());
    }
    return removed;
}

std::vector<std::string> LruIndex::keysBeginningWith(const std::string& prefix) const {
    std::vector<std::string> found;
    for (const Item& item : order_)
        if (item.key.starts_with(prefix)) found.push_back(item.key);
    return found;
}

} // namespace norvane
