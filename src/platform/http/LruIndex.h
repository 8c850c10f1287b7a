#pragma once

#include <cstdint>
#include <list>
#include <string>
#include <unordered_map>
#include <vector>

namespace norvane {

/// Which keys a bounded store holds, how large each is, and which was used longest ago. Not thread-safe.
class LruIndex {
  public:
    bool contains(const std::string& key) const { return places_.contains(key); }
    std::uint64_t totalSize() const { return totalSize_; }
    /// Adds the key, or changes its size; it counts as just used.
    void put(const std::string& key, std::uint64_t size);
    void touch(const std::string& key);
    void erase(const std::string& key);
    /// Takes out what was used longest ago until the sizes sum up to at most the capacity; answers what.
    std::vector<std::string> shrink(std::uint64_t capacity);
    std::vector<std::string> keysBeginningWith(const std::string& prefix) const;

  private:
    struct Item {
        std::string key;
        std::uint64_t size;
    };
    std::list<Item> order_; ///< just used first
    std::unordered_map<std::string, std::list<Item>::iterator> places_;
    std::uint64_t totalSize_ = 0;
};

} // namespace norvane
