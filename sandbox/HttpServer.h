#pragma once

#include "sandbox/Fault.h"
#include "sandbox/HttpMessage.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace norvane::sandbox {

/// What the server asks while it serves; called on the server's threads, several at a time. Throws nothing.
class HttpHandler {
  public:
    struct Plan {
        std::uint64_t number = 0; ///< handed back to finished()
        std::optional<Fault> fault;
    };

    virtual ~HttpHandler() = default;
    /// The headers of a request have arrived, its body has not been read.
    virtual Plan begin(const Request& head) = 0;
    /// The whole request is there, and no fault stands before its effect.
    virtual Answer handle(const Request& request) = 0;
    /// Once for every begin(), before the peer sees how it ended, unless the server ends before: `status` is
    /// that of the answer about to be sent, 0 for none; `bodySize` counts the bytes of the body that were
    /// read, `request.body` is empty when the request was cut off.
    virtual void finished(const Plan& plan, const Request& request, std::uint64_t bodySize, int status) = 0;
};

/// HTTP/1.1 over TLS on a few threads of its own. Keeps connections, answers "Expect: 100-continue".
class HttpServer {
  public:
    struct Options {
        std::string host;       ///< an IP address of this machine
        std::uint16_t port = 0; ///< 0 takes a free one
        std::filesystem::path certificateChain;
        std::filesystem::path privateKey;
        std::uint64_t maximumBodyBytes = 0;
    };

    /// Listens when it returns, so that the port is known; throws std::runtime_error when it cannot.
    /// `handler` outlives the server and is not called before serve().
    HttpServer(const Options& options, HttpHandler& handler);
    ~HttpServer(); ///< closes every connection, waits for calls of the handler to return
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    std::uint16_t port() const;
    void serve(); ///< starts the threads; once only

  private:
    class Listener;
    std::unique_ptr<Listener> listener_;
};

} // namespace norvane::sandbox
