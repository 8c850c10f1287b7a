#include "src/platform/http/ResponseCache.h"

#include "src/platform/http/CacheEntryFile.h"

#include <algorithm>
#include <system_error>
#include <tuple>
#include <vector>

namespace norvane {
namespace {

std::uint64_t sizeInMemory(const CachedResponse& cached) {
    std::uint64_t size = cached.response.body.size();
    for (const auto& [name, value] : cached.response.headers)
        size += name.size() + value.size();
    return size;
}

} // namespace

ResponseCache::ResponseCache(std::shared_ptr<Files> files)
    : files_(std::move(files))
    , folder_(files_->cachesFolder() / "swagger_url_cache") {}

std::optional<CachedResponse> ResponseCache::find(const std::string& key) {
    const std::lock_guard lock(mutex_);
    if (const auto held = memory_.find(key); held != memory_.end()) {
        memoryIndex_.touch(key);
        diskIndex_.touch(key);
        return held->second;
    }
    readIndex();
    if (!diskIndex_.contains(key)) return std::nullopt;
    const auto bytes = files_->read(fileOf(key));
    auto cached = bytes ? decodeCacheEntry(*bytes) : std::nullopt;
    if (!cached) {
        forgetKey(key);
        return std::nullopt;
    }
    diskIndex_.touch(key);
    putIntoMemory(key, *cached);
    return cached;
}

std::uint64_t ResponseCache::generation() const {
    const std::lock_guard lock(mutex_);
    return generation_;
}

void ResponseCache::store(const std::string& key, const CachedResponse& cached, std::uint64_t generation) {
    const std::lock_guard lock(mutex_);
    if (generation != generation_) return;
    putIntoMemory(key, cached);

    readIndex();
    const Data bytes = encodeCacheEntry(cached);
    if (bytes.size() <= diskCapacity_ && !files_->createFolder(folder_) &&
        !files_->write(fileOf(key), bytes)) {
        diskIndex_.put(key, bytes.size());
        shrinkDisk();
    } else if (diskIndex_.contains(key)) {
        files_->remove(fileOf(key)); // the earlier answer is out of date
        diskIndex_.erase(key);
    }
}

void ResponseCache::forget(const std::string& keyPrefix) {
    const std::lock_guard lock(mutex_);
    readIndex();
    for (const std::string& key : memoryIndex_.keysBeginningWith(keyPrefix))
        forgetKey(key);
    for (const std::string& key : diskIndex_.keysBeginningWith(keyPrefix))
        forgetKey(key);
}

void ResponseCache::clear() {
    const std::lock_guard lock(mutex_);
    ++generation_;
    memory_.clear();
    memoryIndex_ = {};
    files_->remove(folder_);
    diskIndex_ = {};
    indexIsRead_ = true;
}

void ResponseCache::setCapacity(std::uint64_t memoryBytes, std::uint64_t diskBytes) {
    const std::lock_guard lock(mutex_);
    memoryCapacity_ = memoryBytes;
    diskCapacity_ = diskBytes;
    readIndex();
    shrinkMemory();
    shrinkDisk();
}

/// Takes stock of what earlier runs left, the files written longest ago counting as used longest ago.
void ResponseCache::readIndex() {
    if (std::exchange(indexIsRead_, true)) return;
    std::vector<std::tuple<std::filesystem::file_time_type, std::string, std::uint64_t>> found;
    std::error_code error;
    for (auto entry = std::filesystem::directory_iterator(folder_, error);
         !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        std::error_code gone;
        const auto time = entry->last_write_time(gone);
        const auto size = entry->file_size(gone);
        if (!gone) found.emplace_back(time, entry->path().filename().string(), size);
    }
    std::sort(found.begin(), found.end());
    for (const auto& [time, name, size] : found)
        diskIndex_.put(name, size);
    shrinkDisk();
}

void ResponseCache::putIntoMemory(const std::string& key, const CachedResponse& cached) {
    const std::uint64_t size = sizeInMemory(cached);
    if (size > memoryCapacity_) {
        memory_.erase(key);
        memoryIndex_.erase(key);
        return;
    }
    memory_.insert_or_assign(key, cached);
    memoryIndex_.put(key, size);
    shrinkMemory();
}

void ResponseCache::shrinkMemory() {
    for (const std::string& key : memoryIndex_.shrink(memoryCapacity_))
        memory_.erase(key);
}

void ResponseCache::shrinkDisk() {
    for (const std::string& key : diskIndex_.shrink(diskCapacity_))
        files_->remove(fileOf(key));
}

void ResponseCache::forgetKey(const std::string& key) {
    memory_.erase(key);
    memoryIndex_.erase(key);
    if (!diskIndex_.contains(key)) return;
    files_->remove(fileOf(key));
    diskIndex_.erase(key);
}

} // namespace norvane
