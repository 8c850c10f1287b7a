#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace norvane::sandbox {

class Json;

/// What to do wrong, to which requests, and how often.
struct Fault {
    enum class Kind {
        None,           ///< only the delay
        Status,         ///< answers `status` with `body`; the request has no other effect
        Portal,         ///< answers 200 with a captive portal's HTML page; the request has no other effect
        Hang,           ///< reads the request and never answers; the connection stays open
        CutRequest,     ///< resets the connection after `bytes` bytes of the request's body
        CutAnswer,      ///< applies the request, sends `bytes` bytes of the answer, closes the connection
        ApplyThenClose, ///< applies the request and resets the connection without an answer
        ApplyThenHang,  ///< applies the request and never answers; the connection stays open
    };

    Kind kind = Kind::Status;
    std::string method = "*"; ///< "*" for any
    /// Pattern of the path without its query: "*" stands for one segment, "**" for all that follow.
    std::string path = "/**";
    int status = 503;
    std::string body;                   ///< empty: an error body of the service's own
    std::chrono::milliseconds delay{0}; ///< before whatever the kind does
    std::uint64_t bytes = 0;
    unsigned skip = 0;  ///< matching requests that pass before the first one is hit
    unsigned times = 1; ///< requests hit after that; 0 for every one

    bool matches(std::string_view requestMethod, std::string_view requestPath) const;
};

/// "status", "cut-request" and so on; "delay" for the delay alone.
std::string_view nameOf(Fault::Kind kind);

struct FaultResult {
    Fault fault;
    std::string error; ///< empty when the fault was understood
    bool ok() const { return error.empty(); }
};

/// Reads "METHOD PATH KIND [skip=N] [nth=N] [times=N] [delay=MS] [body=TEXT]", where KIND is one of status=N,
/// portal, hang, cut-request=N, cut-answer=N, apply-close, apply-hang, or a lone delay=MS. "body=" takes the
/// rest of the text. "nth=3" is short for "skip=2 times=1".
FaultResult parseFault(std::string_view text);

/// Reads {"method", "path", "kind", "status", "body", "bytes", "delayMs", "skip", "nth", "times"}; the kinds
/// have the names that nameOf gives them.
FaultResult faultFromJson(const Json& json);
Json faultJson(const Fault& fault);

} // namespace norvane::sandbox
