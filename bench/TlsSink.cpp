#include "bench/TlsSink.h"

#include "sandbox/Authority.h"

#include <netinet/in.h>
#include <openssl/ssl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <vector>

namespace norvane::bench {

namespace {

std::size_t contentLength(const std::string& head) {
    const std::size_t at = head.find("Content-Length: ");
    return at == std::string::npos ? 0 : std::strtoull(head.c_str() + at + 16, nullptr, 10);
}

/// Reads and answers requests until the connection ends.
void answerAll(SSL* ssl) {
    std::vector<char> buffer(1 << 18);
    std::string head;
    constexpr char answer[] =
        "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: 2\r\n\r\n{}";
    for (;;) {
        head.clear();
        std::size_t end = std::string::npos;
        while ((end = head.find("\r\n\r\n")) == std::string::npos) {
            const int count = SSL_read(ssl, buffer.data(), static_cast<int>(buffer.size()));
            if (count <= 0) return;
            head.append(buffer.data(), static_cast<std::size_t>(count));
        }
        std::size_t left = contentLength(head) - (head.size() - end - 4);
        while (left > 0) {
            const int count = SSL_read(ssl, buffer.data(), static_cast<int>(buffer.size()));
            if (count <= 0) return;
            left -= static_cast<std::size_t>(count);
        }
        if (SSL_write(ssl, answer, sizeof answer - 1) <= 0) return;
    }
}

} // namespace

TlsSink::TlsSink(const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    const auto files = sandbox::prepareAuthority(folder, "127.0.0.1", std::chrono::system_clock::now());
    caFile_ = files.authority;
    SSL_CTX* context = SSL_CTX_new(TLS_server_method());
    if (SSL_CTX_use_certificate_chain_file(context, files.chain.c_str()) != 1 ||
        SSL_CTX_use_PrivateKey_file(context, files.key.c_str(), SSL_FILETYPE_PEM) != 1)
        throw std::runtime_error("the sink's certificate cannot be used");
    listener_ = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener_, 8) != 0)
        throw std::runtime_error("the sink cannot listen");
    socklen_t size = sizeof address;
    getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size);
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this, context] { serve(context); });
}

TlsSink::~TlsSink() {
    stops_ = true;
    shutdown(listener_, SHUT_RDWR);
    if (const int connection = connection_; connection >= 0) shutdown(connection, SHUT_RDWR);
    thread_.join();
    close(listener_);
}

void TlsSink::serve(void* context) {
    auto* tls = static_cast<SSL_CTX*>(context);
    std::vector<std::thread> connections;
    while (!stops_) {
        const int connection = accept(listener_, nullptr, nullptr);
        if (connection < 0) break;
        connection_ = connection;
        connections.emplace_back([tls, connection] {
            SSL* ssl = SSL_new(tls);
            SSL_set_fd(ssl, connection);
            if (SSL_accept(ssl) == 1) answerAll(ssl);
            SSL_free(ssl);
            close(connection);
        });
    }
    for (std::thread& connection : connections)
        connection.join();
    SSL_CTX_free(tls);
}

} // namespace norvane::bench
