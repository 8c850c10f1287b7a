#pragma once

#include <curl/curl.h>

#include <cstdint>
#include <vector>

namespace norvane {

/// The sockets of a lane's connections, by which a transfer learns how much of what it handed over has really
/// been sent: libcurl knows only what the system took, which may be megabytes and take minutes. Belongs to
/// the loop's thread.
class OpenSockets {
  public:
    /// A socket for a new connection, which libcurl closes by `onClose`.
    curl_socket_t open(const curl_sockaddr& address);
    static int onClose(void* self, curl_socket_t socket);

    /// The socket that connects the two TCP ports; CURL_SOCKET_BAD when there is none.
    curl_socket_t find(int localPort, int remotePort) const;
    /// Bytes that the system has taken and the other end has not confirmed; 0 for a socket that has gone.
    std::int64_t unconfirmed(curl_socket_t socket) const;

  private:
    std::vector<curl_socket_t> sockets_;
};

} // namespace norvane
