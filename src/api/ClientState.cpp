#include "src/api/ClientState.h"

#include <norvane/api/NVESApiClient.h>
#include <norvane/api/NVESLogger.h>
#include <norvane/platform/Platform.h>

#include <atomic>
#include <mutex>
#include <set>

// What all clients of the process share.
namespace norvane {
namespace {

constexpr std::uint64_t kCacheMemory = 4'194'304;
constexpr std::uint64_t kCacheDisk = 33'554'432;

struct Shared {
    std::atomic<bool> offline = false;
    std::atomic<bool> cacheEnabled = false;
    std::atomic<int> reachability = 0;

    std::mutex mutex; ///< guards what follows
    std::set<std::uint64_t> queuedRequests;
    std::uint64_t lastRequestId = 0;
    std::function<void(int)> reachabilityChange;
    std::weak_ptr<HttpSession> preparedSession;
};

Shared& shared() {
    // Never destroyed: answers may come while the process ends.
    static Shared& state = *new Shared;
    return state;
}

void log(std::string_view method, const std::string& message) {
    NVESLogger::sharedLogger().debugLog(method, message);
}

} // namespace

void ClientState::prepareSession() {
    const auto session = Platform::current().http;
    {
        const std::lock_guard lock(shared().mutex);
        if (shared().preparedSession.lock() == session) return;
        shared().preparedSession = session;
    }
    session->setCacheCapacity(kCacheMemory, kCacheDisk);
}

void ClientState::reachabilityChanged(int status) {
    NVESApiClient::setReachabilityStatus(status);
    log("reachabilityChanged", "reachability changed to " + std::to_string(status));
    NVESApiClient::setOfflineState(status <= 0);
    std::function<void(int)> changed;
    {
        const std::lock_guard lock(shared().mutex);
        changed = shared().reachabilityChange;
    }
    if (changed) changed(status);
}

void NVESApiClient::setOfflineState(bool state) { shared().offline = state; }

bool NVESApiClient::getOfflineState() { return shared().offline; }

void NVESApiClient::setCacheEnabled(bool enabled) { shared().cacheEnabled = enabled; }

bool NVESApiClient::getCacheEnabled() { return shared().cacheEnabled; }

void NVESApiClient::setReachabilityStatus(int status) { shared().reachability = status; }

int NVESApiClient::getReachabilityStatus() { return shared().reachability; }

void NVESApiClient::setReachabilityChangeBlock(std::function<void(int)> changeBlock) {
    const std::lock_guard lock(shared().mutex);
    shared().reachabilityChange.swap(changeBlock);
}

void NVESApiClient::clearCache() { Platform::current().http->clearCache(); }

void NVESApiClient::configureCacheWithMemoryAndDiskCapacity(std::uint64_t memorySize,
                                                            std::uint64_t diskSize) {
    ClientState::prepareSession();
    Platform::current().http->setCacheCapacity(memorySize, diskSize);
}

std::size_t NVESApiClient::requestQueueSize() {
    const std::lock_guard lock(shared().mutex);
    return shared().queuedRequests.size();
}

std::uint64_t NVESApiClient::nextRequestId() {
    const std::lock_guard lock(shared().mutex);
    return ++shared().lastRequestId;
}

std::uint64_t NVESApiClient::queueRequest() {
    std::uint64_t requestId = 0;
    {
        const std::lock_guard lock(shared().mutex);
        requestId = ++shared().lastRequestId;
        shared().queuedRequests.insert(requestId);
    }
    log("queueRequest", "added " + std::to_string(requestId) + " to request queue");
    return requestId;
}

void NVESApiClient::cancelRequest(std::uint64_t requestId) {
    const std::lock_guard lock(shared().mutex);
    shared().queuedRequests.erase(requestId);
}

bool NVESApiClient::executeRequestWithId(std::uint64_t requestId) {
    {
        const std::lock_guard lock(shared().mutex);
        if (shared().queuedRequests.erase(requestId) == 0) return false;
    }
    log("executeRequestWithId", "removed request id " + std::to_string(requestId));
    return true;
}

} // namespace norvane
