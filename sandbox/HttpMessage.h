#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace norvane::sandbox {

using Headers = std::vector<std::pair<std::string, std::string>>;

/// The first header of that name, ignoring case; null when there is none.
const std::string* findHeader(const Headers& headers, std::string_view name);

/// One request, as it arrived.
struct Request {
    std::uint64_t number = 0; ///< of arrival, counted from 1
    std::string method;
    std::string target; ///< as on the request line
    std::string path;   ///< the target up to the question mark
    Headers query;      ///< names and values, percent escapes undone
    Headers headers;    ///< as received, in order
    std::string body;
    bool fromLoopback = false;

    const std::string* header(std::string_view name) const { return findHeader(headers, name); }
    /// The first value of a query parameter; empty when it is absent.
    std::string queryValue(std::string_view name) const;
};

struct Answer {
    int status = 200;
    std::string contentType = "application/json; charset=utf-8";
    std::string body;
    Headers headers; ///< beyond Content-Type, Content-Length and Connection
};

/// {"errorCode": code, "message": message}
Answer errorAnswer(int status, std::string_view code, std::string_view message);

/// Fills `path` and `query` from the target; false when an escape in the query is broken.
bool splitTarget(Request& request);

} // namespace norvane::sandbox
