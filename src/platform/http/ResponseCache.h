#pragma once

#include "src/platform/http/CacheRules.h"
#include "src/platform/http/LruIndex.h"

#include <norvane/platform/Files.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>

namespace norvane {

/// Keeps responses in memory and, so that they outlast the process, in the folder "swagger_url_cache" of the
/// caches folder. What to keep and when to use it is said by CacheRules. Any thread may call; calls read and
/// write files. A disk that fails only makes the cache forget.
class ResponseCache {
  public:
    static constexpr std::uint64_t kDefaultMemoryBytes = 4'194'304;
    static constexpr std::uint64_t kDefaultDiskBytes = 33'554'432;

    explicit ResponseCache(std::shared_ptr<Files> files);

    std::optional<CachedResponse> find(const std::string& key);
    /// Changes with every `clear`: an answer that was asked for before one is not kept after it.
    std::uint64_t generation() const;
    void store(const std::string& key, const CachedResponse& cached, std::uint64_t generation);
    /// Forgets one key, or with `cacheKeyOfUrl` everything kept for an address.
    void forget(const std::string& keyPrefix);
    void clear();
    void setCapacity(std::uint64_t memoryBytes, std::uint64_t diskBytes);

  private:
    std::filesystem::path fileOf(const std::string& key) const { return folder_ / key; }
    void readIndex();
    void putIntoMemory(const std::string& key, const CachedResponse& cached);
    void shrinkMemory();
    void shrinkDisk();
    void forgetKey(const std::string& key);

    const std::shared_ptr<Files> files_;
    const std::filesystem::path folder_;

    mutable std::mutex mutex_; ///< guards everything below, and the files of the folder
    std::uint64_t memoryCapacity_ = kDefaultMemoryBytes;
    std::uint64_t diskCapacity_ = kDefaultDiskBytes;
    std::uint64_t generation_ = 0;
    std::unordered_map<std::string, CachedResponse> memory_;
    LruIndex memoryIndex_;
    LruIndex diskIndex_;
    bool indexIsRead_ = false;
};

} // namespace norvane
