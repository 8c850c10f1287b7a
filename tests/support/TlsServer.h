#pragma once

#include "tests/support/Certificates.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

struct ssl_ctx_st;

namespace norvane {

/// A request as it came in, byte for byte.
struct ReceivedRequest {
    std::size_t connection = 0; ///< which connection, counted from 0
    std::string head;           ///< from the request line to the empty line, both included
    std::string body;           ///< what arrived of it
    bool complete = true;       ///< whether the whole body arrived

    std::string method() const;
    std::string target() const; ///< path and query as sent
    std::optional<std::string> header(std::string_view name) const;
};

/// What the server does about a request.
struct ServerReply {
    enum class Ending { KeepsOpen, Closes, Hangs };

    std::string bytes; ///< all that goes over the wire
    Ending ending = Ending::KeepsOpen;
    std::chrono::milliseconds delay{0}; ///< before each piece
    std::size_t pieces = 1;             ///< how many the bytes are sent in

    using Headers = std::vector<std::pair<std::string, std::string>>;
    /// A well-formed answer with a "Content-Length".
    static ServerReply with(int status, std::string_view body = {}, const Headers& headers = {});
    /// Closes the connection, or leaves it open, and never answers.
    static ServerReply closing() { return {{}, Ending::Closes, {}, 1}; }
    static ServerReply hanging() { return {{}, Ending::Hangs, {}, 1}; }
    /// Only the first bytes of this reply, and then the other ending.
    ServerReply cutAfter(std::size_t count, Ending how = Ending::Closes) const;
};

/// A small HTTP/1.1 server on a port of the loopback interface, over TLS when it has an identity. It does
/// what its handler says, to the byte, remembers every request, and goes away with the test: its destruction
/// closes what is still open. Bodies must have a "Content-Length".
class TlsServer {
  public:
    /// Called on the connection's own thread, as soon as a request is there whole; it may wait for the test.
    using Handler = std::function<ServerReply(const ReceivedRequest&)>;

    TlsServer(std::optional<ServerIdentity> identity, Handler handler);
    ~TlsServer();
    TlsServer(const TlsServer&) = delete;
    TlsServer& operator=(const TlsServer&) = delete;

    int port() const { return port_; }
    /// "https://localhost:1234" or "http://localhost:1234".
    std::string baseAddress() const;
    /// From now on connections are closed once that many bytes of a body have come.
    void closeInsideBodiesAfter(std::size_t count);
    /// From now on new connections buffer little, and a piece of a body (64 kB at most) is taken only so
    /// often.
    void readBodiesSlowly(std::chrono::milliseconds pause);

    std::vector<ReceivedRequest> requests() const;
    /// How many requests for that target arrived, whole or not.
    std::size_t arrivals(std::string_view target) const;
    std::size_t connectionCount() const; ///< connections accepted, handshakes that failed included
    /// Whether that many requests arrived before ten seconds passed.
    bool waitForRequests(std::size_t count) const;

  private:
    class Connection;

    void accept();
    void serve(int socket, std::size_t number);
    bool answer(Connection& connection, ReceivedRequest request);
    bool finish(Connection& connection, const ServerReply& reply);

    const Handler handler_;
    const std::shared_ptr<ssl_ctx_st> tls_; ///< null for plain HTTP
    int listener_ = -1;
    int port_ = 0;

    mutable std::mutex mutex_; ///< guards what follows
    mutable std::condition_variable changed_;
    std::vector<ReceivedRequest> requests_;
    std::vector<int> open_;
    std::size_t connections_ = 0;
    std::size_t bodyLimit_ = SIZE_MAX;
    std::chrono::milliseconds bodyPause_{0};
    bool stopping_ = false;
    std::vector<std::thread> servers_;

    std::thread acceptor_;
};

} // namespace norvane
