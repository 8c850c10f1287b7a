#pragma once

#include "sandbox/HttpMessage.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <vector>

namespace norvane::sandbox {

/// A request as the log remembers it.
struct LoggedRequest {
    std::uint64_t number = 0; ///< of arrival, counted from 1
    std::string method;
    std::string target;
    std::string path;
    Headers headers;
    std::uint64_t bodySize = 0; ///< bytes of the body that were read
    std::string body;           ///< kept when it has at most 65,536 bytes
    std::string fault;          ///< kind of the fault that hit it; empty for none
    bool finished = false;      ///< about to be answered, cut off, or left to hang
    int status = 0;             ///< of the answer; 0 for none
};

/// The last 10,000 requests, in the order in which their headers arrived; those to administer the service
/// itself are left out. Any thread may call.
class RequestLog {
  public:
    /// Enters a request whose headers have arrived; answers its number.
    std::uint64_t begin(const Request& head, std::string_view fault);
    void end(std::uint64_t number, const std::string& body, std::uint64_t bodySize, int status);
    std::vector<LoggedRequest> all() const;
    void clear();
    /// Waits until the test holds for what is logged; false when it does not within the time.
    bool waitUntil(const std::function<bool(const std::deque<LoggedRequest>&)>& test,
                   std::chrono::milliseconds time) const;

  private:
    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    std::deque<LoggedRequest> requests_; ///< guarded by mutex_
    std::uint64_t arrivals_ = 0;         ///< guarded by mutex_
};

} // namespace norvane::sandbox
