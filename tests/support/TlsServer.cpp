#include "tests/support/TlsServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <openssl/err.h>
#include <openssl/pem.h>
#include <openssl/ssl.h>
#include <strings.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <stdexcept>

namespace norvane {
namespace {

constexpr std::string_view kEndOfHead = "\r\n\r\n";

std::shared_ptr<SSL_CTX> makeTls(const std::optional<ServerIdentity>& identity) {
    if (!identity) return nullptr;
    std::shared_ptr<SSL_CTX> tls(SSL_CTX_new(TLS_server_method()), &SSL_CTX_free);
    const auto text = [](const std::string& pem) {
        return std::unique_ptr<BIO, decltype(&BIO_free)>(
            BIO_new_mem_buf(pem.data(), static_cast<int>(pem.size())), &BIO_free);
    };
    const auto chain = text(identity->certificateChain);
    bool usable = true;
    bool own = true;
    while (X509* certificate = PEM_read_bio_X509(chain.get(), nullptr, nullptr, nullptr)) {
        if (own) {
            usable = SSL_CTX_use_certificate(tls.get(), certificate) == 1;
            X509_free(certificate);
        } else {
            usable = usable && SSL_CTX_add_extra_chain_cert(tls.get(), certificate) == 1; // takes it over
        }
        own = false;
    }
    ERR_clear_error(); // the end of the chain counts as an error
    const std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> key(
        PEM_read_bio_PrivateKey(text(identity->privateKey).get(), nullptr, nullptr, nullptr), &EVP_PKEY_free);
    if (!usable || !key || SSL_CTX_use_PrivateKey(tls.get(), key.get()) != 1)
        throw std::runtime_error("the test server cannot use its identity");
    return tls;
}

} // namespace

/// The bytes of one connection, in the clear or over TLS.
class TlsServer::Connection {
  public:
    Connection(int socket, SSL_CTX* tls)
        : socket_(socket)
        , tls_(tls ? SSL_new(tls) : nullptr, &SSL_free) {}

    bool begin() { return !tls_ || (SSL_set_fd(tls_.get(), socket_) == 1 && SSL_accept(tls_.get()) == 1); }

    /// False when nothing more comes.
    bool receive(std::string& into) {
        std::array<char, 65536> buffer;
        const int size = static_cast<int>(buffer.size());
        const auto count = tls_ ? SSL_read(tls_.get(), buffer.data(), size)
                                : static_cast<int>(::recv(socket_, buffer.data(), buffer.size(), 0));
        if (count <= 0) return false;
        into.append(buffer.data(), static_cast<std::size_t>(count));
        return true;
    }

    bool send(std::string_view bytes) {
        while (!bytes.empty()) {
            const auto count =
                tls_ ? SSL_write(tls_.get(), bytes.data(), static_cast<int>(bytes.size()))
                     : static_cast<int>(::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL));
            if (count <= 0) return false;
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
        return true;
    }

    std::string unread; ///< received, but not yet part of a request

  private:
    const int socket_;
    std::unique_ptr<SSL, decltype(&SSL_free)> tls_;
};

std::string ReceivedRequest::method() const { return head.substr(0, head.find(' ')); }

std::string ReceivedRequest::target() const {
    const auto begin = head.find(' ') + 1;
    return head.substr(begin, head.find(' ', begin) - begin);
}

std::optional<std::string> ReceivedRequest::header(std::string_view name) const {
    for (auto line = head.find("\r\n"); line + 2 < head.size(); line = head.find("\r\n", line + 2)) {
        const auto begin = line + 2;
        if (head.size() <= begin + name.size() || head[begin + name.size()] != ':' ||
            strncasecmp(head.data() + begin, name.data(), name.size()) != 0)
            continue;
        const auto value = head.find_first_not_of(' ', begin + name.size() + 1);
        return head.substr(value, head.find("\r\n", value) - value);
    }
    return std::nullopt;
}

ServerReply ServerReply::with(int status, std::string_view body, const Headers& headers) {
    std::string bytes = "HTTP/1.1 " + std::to_string(status) + " Status\r\n";
    for (const auto& [name, value] : headers)
        bytes += name + ": " + value + "\r\n";
    if (status != 204 && status != 304) bytes += "Content-Length: " + std::to_string(body.size()) + "\r\n";
    return {bytes + "\r\n" + std::string(body), Ending::KeepsOpen, {}, 1};
}

ServerReply ServerReply::cutAfter(std::size_t count, Ending how) const {
    return {bytes.substr(0, count), how, delay, pieces};
}

TlsServer::TlsServer(std::optional<ServerIdentity> identity, Handler handler)
    : handler_(std::move(handler))
    , tls_(makeTls(identity))
    , listener_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    if (listener_ < 0 || ::bind(listener_, generic, size) != 0 || ::listen(listener_, 64) != 0 ||
        ::getsockname(listener_, generic, &size) != 0)
        throw std::runtime_error("the test server cannot listen");
    port_ = ntohs(address.sin_port);
    acceptor_ = std::thread([this] { accept(); });
}

TlsServer::~TlsServer() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
        for (const int socket : open_)
            ::shutdown(socket, SHUT_RDWR);
    }
    changed_.notify_all();
    ::shutdown(listener_, SHUT_RDWR);
    acceptor_.join();
    for (std::thread& server : servers_)
        server.join();
    ::close(listener_);
}

std::string TlsServer::baseAddress() const {
    return (tls_ ? "https://localhost:" : "http://localhost:") + std::to_string(port_);
}

void TlsServer::closeInsideBodiesAfter(std::size_t count) {
    const std::lock_guard lock(mutex_);
    bodyLimit_ = count;
}

void TlsServer::readBodiesSlowly(std::chrono::milliseconds pause) {
    constexpr int kBuffer = 128 << 10;
    ::setsockopt(listener_, SOL_SOCKET, SO_RCVBUF, &kBuffer, sizeof kBuffer);
    const std::lock_guard lock(mutex_);
    bodyPause_ = pause;
}

std::vector<ReceivedRequest> TlsServer::requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
}

std::size_t TlsServer::arrivals(std::string_view target) const {
    const std::lock_guard lock(mutex_);
    return static_cast<std::size_t>(std::count_if(
        requests_.begin(), requests_.end(), [&](const auto& request) { return request.target() == target; }));
}

std::size_t TlsServer::connectionCount() const {
    const std::lock_guard lock(mutex_);
    return connections_;
}

bool TlsServer::waitForRequests(std::size_t count) const {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, std::chrono::seconds(10), [&] { return requests_.size() >= count; });
}

void TlsServer::accept() {
    while (true) {
        const int socket = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        if (socket < 0) return;
        const std::lock_guard lock(mutex_);
        if (stopping_) {
            ::close(socket);
            return;
        }
        open_.push_back(socket);
        servers_.emplace_back([this, socket, number = connections_++] { serve(socket, number); });
    }
}

void TlsServer::serve(int socket, std::size_t number) {
    sigset_t pipe;
    sigemptyset(&pipe);
    sigaddset(&pipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
    {
        Connection connection(socket, tls_.get());
        bool open = connection.begin();
        while (open) {
            const auto end = connection.unread.find(kEndOfHead);
            if (end == std::string::npos) {
                open = connection.receive(connection.unread);
                continue;
            }
            ReceivedRequest request;
            request.connection = number;
            request.head = connection.unread.substr(0, end + kEndOfHead.size());
            connection.unread.erase(0, request.head.size());
            open = answer(connection, std::move(request));
        }
    }
    const std::lock_guard lock(mutex_);
    std::erase(open_, socket);
    ::close(socket);
}

/// False when the connection is to be closed.
bool TlsServer::answer(Connection& connection, ReceivedRequest request) {
    const std::size_t size = std::stoul(request.header("Content-Length").value_or("0"));
    std::unique_lock lock(mutex_);
    const std::size_t wanted = std::min(size, bodyLimit_);
    const auto pause = bodyPause_;
    lock.unlock();
    bool open = true;
    while (open && connection.unread.size() < wanted) {
        if (pause.count() > 0) std::this_thread::sleep_for(pause);
        open = connection.receive(connection.unread);
    }
    request.body = connection.unread.substr(0, wanted);
    request.complete = request.body.size() == size;
    connection.unread.erase(0, request.body.size());

    lock.lock();
    requests_.push_back(request);
    lock.unlock();
    changed_.notify_all();
    return request.complete && finish(connection, handler_(request));
}

bool TlsServer::finish(Connection& connection, const ServerReply& reply) {
    const std::size_t size = reply.bytes.size() / reply.pieces + 1;
    for (std::size_t piece = 0; piece < reply.pieces; ++piece) {
        std::unique_lock lock(mutex_);
        if (changed_.wait_for(lock, reply.delay, [this] { return stopping_; })) return false;
        lock.unlock();
        const auto begin = std::min(piece * size, reply.bytes.size());
        if (!connection.send(std::string_view(reply.bytes).substr(begin, size))) return false;
    }
    if (reply.ending != ServerReply::Ending::Hangs) return reply.ending == ServerReply::Ending::KeepsOpen;
    while (connection.receive(connection.unread)) { // until the client or the test gives up
    }
    return false;
}

} // namespace norvane
