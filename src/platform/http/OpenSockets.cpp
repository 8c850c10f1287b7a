#include "src/platform/http/OpenSockets.h"

#include <linux/sockios.h>
#include <netinet/in.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>

namespace norvane {
namespace {

using NameOf = int (*)(int, sockaddr*, socklen_t*); ///< getsockname or getpeername

int portOf(curl_socket_t socket, NameOf nameOf) {
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    if (nameOf(socket, reinterpret_cast<sockaddr*>(&address), &size) != 0) return -1;
    if (address.ss_family == AF_INET6) return ntohs(reinterpret_cast<const sockaddr_in6&>(address).sin6_port);
    return ntohs(reinterpret_cast<const sockaddr_in&>(address).sin_port);
}

} // namespace

curl_socket_t OpenSockets::open(const curl_sockaddr& address) {
    const curl_socket_t made = ::socket(address.family, address.socktype | SOCK_CLOEXEC, address.protocol);
    if (made != CURL_SOCKET_BAD) sockets_.push_back(made);
    return made;
}

int OpenSockets::onClose(void* self, curl_socket_t socket) {
    std::erase(static_cast<OpenSockets*>(self)->sockets_, socket);
    return ::close(socket);
}

curl_socket_t OpenSockets::find(int localPort, int remotePort) const {
    const auto found = std::find_if(sockets_.begin(), sockets_.end(), [&](curl_socket_t socket) {
        return portOf(socket, &::getsockname) == localPort && portOf(socket, &::getpeername) == remotePort;
    });
    return found == sockets_.end() ? CURL_SOCKET_BAD : *found;
}

std::int64_t OpenSockets::unconfirmed(curl_socket_t socket) const {
    int bytes = 0;
    if (std::find(sockets_.begin(), sockets_.end(), socket) == sockets_.end() ||
        ::ioctl(socket, SIOCOUTQ, &bytes) != 0)
        return 0;
    return bytes;
}

} // namespace norvane
