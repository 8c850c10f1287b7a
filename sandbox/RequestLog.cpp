#include "sandbox/RequestLog.h"

#include <utility>

namespace norvane::sandbox {

namespace {
constexpr std::size_t kRemembered = 10'000;
constexpr std::size_t kKeptBodyBytes = 65'536;
} // namespace

std::uint64_t RequestLog::begin(const Request& head, std::string_view fault) {
    LoggedRequest entry;
    entry.method = head.method;
    entry.target = head.target;
    entry.path = head.path;
    entry.headers = head.headers;
    entry.fault = fault;
    const std::lock_guard lock(mutex_);
    entry.number = ++arrivals_;
    requests_.push_back(std::move(entry));
    if (requests_.size() > kRemembered) requests_.pop_front();
    changed_.notify_all();
    return arrivals_;
}

void RequestLog::end(std::uint64_t number, const std::string& body, std::uint64_t bodySize, int status) {
    const std::lock_guard lock(mutex_);
    if (requests_.empty() || number < requests_.front().number) return;
    LoggedRequest& entry = requests_[number - requests_.front().number];
    entry.bodySize = bodySize;
    if (body.size() <= kKeptBodyBytes) entry.body = body;
    entry.status = status;
    entry.finished = true;
    changed_.notify_all();
}

std::vector<LoggedRequest> RequestLog::all() const {
    const std::lock_guard lock(mutex_);
    return {requests_.begin(), requests_.end()};
}

void RequestLog::clear() {
    const std::lock_guard lock(mutex_);
    requests_.clear();
}

bool RequestLog::waitUntil(const std::function<bool(const std::deque<LoggedRequest>&)>& test,
                           std::chrono::milliseconds time) const {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, time, [&] { return test(requests_); });
}

} // namespace norvane::sandbox
