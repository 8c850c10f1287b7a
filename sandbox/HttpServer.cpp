#include "sandbox/HttpServer.h"

#include "sandbox/Json.h"

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/redirect_error.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/strand.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/serializer.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/ssl/ssl_stream.hpp>

#include <thread>
#include <vector>

namespace norvane::sandbox {

namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using asio::ip::tcp;
using Stream = beast::ssl_stream<beast::tcp_stream>;
using Parser = http::request_parser<http::string_body>;
using boost::system::error_code;

constexpr auto kHandshakeTime = std::chrono::seconds(30);
constexpr auto kIdleTime = std::chrono::minutes(5);
constexpr std::uint32_t kMaximumHeaderBytes = 65'536;
constexpr unsigned kThreads = 4;
constexpr std::string_view kPortalPage =
    "<!DOCTYPE html><html><head><title>Welcome to Guest Wi-Fi</title></head><body><h1>Welcome</h1>"
    "<p>Please accept the terms of use to go online.</p><form method=\"post\" action=\"/accept\">"
    "<button>Connect</button></form></body></html>";

Request headOf(const Parser& parser, bool fromLoopback) {
    const auto& message = parser.get();
    Request head;
    head.method = std::string(message.method_string());
    head.target = std::string(message.target());
    head.fromLoopback = fromLoopback;
    for (const auto& field : message)
        head.headers.emplace_back(std::string(field.name_string()), std::string(field.value()));
    return head;
}

std::string serialized(const Answer& answer, bool keepAlive, bool withBody) {
    const auto status = static_cast<http::status>(answer.status);
    std::string text = "HTTP/1.1 " + std::to_string(answer.status) + " " +
                       std::string(http::obsolete_reason(status)) + "\r\n";
    text += "Content-Type: " + answer.contentType + "\r\n";
    text += "Content-Length: " + std::to_string(answer.body.size()) + "\r\n";
    for (const auto& [name, value] : answer.headers)
        text.append(name).append(": ").append(value).append("\r\n");
    text += keepAlive ? "Connection: keep-alive\r\n\r\n" : "Connection: close\r\n\r\n";
    return withBody ? text + answer.body : text;
}

Answer faultAnswer(const Fault& fault) {
    if (fault.kind == Fault::Kind::Portal)
        return {200, "text/html; charset=utf-8", std::string(kPortalPage), {}};
    Answer answer = errorAnswer(fault.status, "FAULT_REQUESTED", "This answer was asked for as a fault.");
    if (fault.body.empty()) return answer;
    answer.body = fault.body;
    if (!parseJson(fault.body).ok()) answer.contentType = "text/html; charset=utf-8";
    return answer;
}

/// One connection, from its handshake to its end.
class Connection {
  public:
    Connection(tcp::socket socket, asio::ssl::context& tls, HttpHandler& handler, std::uint64_t maximumBody)
        : stream_(std::move(socket), tls)
        , timer_(stream_.get_executor())
        , handler_(handler)
        , maximumBody_(maximumBody) {}

    asio::awaitable<void> run() {
        error_code error;
        const auto peer = lowest().socket().remote_endpoint(error);
        if (error) co_return;
        fromLoopback_ = peer.address().is_loopback();
        lowest().socket().set_option(tcp::no_delay(true), error);
        lowest().expires_after(kHandshakeTime);
        co_await stream_.async_handshake(asio::ssl::stream_base::server,
                                         asio::redirect_error(asio::use_awaitable, error));
        if (error) co_return;
        bool goOn = true;
        while (goOn)
            goOn = co_await serveOne();
    }

  private:
    beast::tcp_stream& lowest() { return beast::get_lowest_layer(stream_); }

    /// True when the connection may serve another request.
    asio::awaitable<bool> serveOne() {
        Parser parser;
        parser.header_limit(kMaximumHeaderBytes);
        parser.body_limit(maximumBody_);
        error_code error;
        lowest().expires_after(kIdleTime);
        co_await http::async_read_header(stream_, buffer_, parser,
                                         asio::redirect_error(asio::use_awaitable, error));
        if (error) co_return co_await refuse(error);
        Request request = headOf(parser, fromLoopback_);
        splitTarget(request);
        const HttpHandler::Plan plan = handler_.begin(request);
        request.number = plan.number;
        int status = 0;
        Fault none;
        none.kind = Fault::Kind::None;
        const bool keep = co_await exchange(parser, request, plan.fault.value_or(none), status);
        handler_.finished(plan, request, bodyBytes_, status);
        if (hangs_) co_await waitForPeer();
        co_return keep;
    }

    asio::awaitable<bool> exchange(Parser& parser, Request& request, Fault fault, int& status) {
        using Kind = Fault::Kind;
        if (!co_await readBody(parser, fault)) co_return false;
        request.body = std::move(parser.get().body());
        if (fault.delay.count() > 0) co_await pause(fault.delay);
        hangs_ = fault.kind == Kind::Hang || fault.kind == Kind::ApplyThenHang;
        if (fault.kind == Kind::Hang) co_return false;
        const bool bad = fault.kind == Kind::Status || fault.kind == Kind::Portal;
        const Answer answer = bad ? faultAnswer(fault) : handler_.handle(request);
        if (fault.kind == Kind::ApplyThenClose) reset();
        if (fault.kind == Kind::ApplyThenClose || hangs_) co_return false;
        const bool keepAlive = parser.get().keep_alive() && fault.kind != Kind::CutAnswer;
        std::string text = serialized(answer, keepAlive, request.method != "HEAD");
        if (fault.kind == Kind::CutAnswer) text.resize(std::min<std::size_t>(text.size(), fault.bytes));
        status = answer.status;
        if (!co_await send(text)) co_return false;
        if (!keepAlive && fault.kind != Kind::CutAnswer) co_await sayGoodbye();
        co_return keepAlive;
    }

    /// False when the connection ended, or was cut on purpose, before the body was whole.
    asio::awaitable<bool> readBody(Parser& parser, const Fault& fault) {
        const bool cuts = fault.kind == Fault::Kind::CutRequest;
        bodyBytes_ = 0;
        const auto expect = parser.get().find(http::field::expect);
        const bool asked = expect != parser.get().end() && beast::iequals(expect->value(), "100-continue");
        if (asked && !co_await send("HTTP/1.1 100 Continue\r\n\r\n")) co_return false;
        error_code error;
        while (!error && !parser.is_done() && !(cuts && bodyBytes_ >= fault.bytes)) {
            lowest().expires_after(kIdleTime);
            co_await http::async_read_some(stream_, buffer_, parser,
                                           asio::redirect_error(asio::use_awaitable, error));
            bodyBytes_ = parser.get().body().size();
        }
        if (cuts) reset();
        co_return !error && !cuts;
    }

    asio::awaitable<bool> send(std::string text) {
        error_code error;
        lowest().expires_after(kIdleTime);
        co_await asio::async_write(stream_, asio::buffer(text),
                                   asio::redirect_error(asio::use_awaitable, error));
        co_return !error;
    }

    asio::awaitable<bool> refuse(error_code error) {
        if (error == http::error::body_limit)
            co_await send(
                serialized(errorAnswer(413, "REQUEST_TOO_LARGE", "The body is too large."), false, true));
        else if (error.category() == http::make_error_code(http::error::end_of_stream).category() &&
                 error != http::error::end_of_stream && error != http::error::partial_message)
            co_await send(serialized(errorAnswer(400, "MALFORMED_REQUEST", error.message()), false, true));
        co_await sayGoodbye();
        co_return false;
    }

    asio::awaitable<void> pause(std::chrono::milliseconds time) {
        error_code error;
        lowest().expires_never();
        timer_.expires_after(time);
        co_await timer_.async_wait(asio::redirect_error(asio::use_awaitable, error));
    }

    asio::awaitable<void> waitForPeer() {
        error_code error;
        lowest().expires_never();
        char ignored[256];
        while (!error)
            co_await stream_.async_read_some(asio::buffer(ignored),
                                             asio::redirect_error(asio::use_awaitable, error));
    }

    asio::awaitable<void> sayGoodbye() {
        error_code error;
        lowest().expires_after(std::chrono::seconds(2));
        co_await stream_.async_shutdown(asio::redirect_error(asio::use_awaitable, error));
    }

    /// Closes so that the peer sees a reset, not an orderly end.
    void reset() {
        error_code error;
        lowest().socket().set_option(asio::socket_base::linger(true, 0), error);
        lowest().socket().close(error);
    }

    Stream stream_;
    beast::flat_buffer buffer_;
    asio::steady_timer timer_;
    HttpHandler& handler_;
    std::uint64_t maximumBody_;
    std::uint64_t bodyBytes_ = 0;
    bool fromLoopback_ = false;
    bool hangs_ = false;
};

asio::awaitable<void> converse(tcp::socket socket, asio::ssl::context& tls, HttpHandler& handler,
                               std::uint64_t maximumBody) {
    const auto connection = std::make_unique<Connection>(std::move(socket), tls, handler, maximumBody);
    co_await connection->run();
}

} // namespace

class HttpServer::Listener {
  public:
    Listener(const Options& options, HttpHandler& handler)
        : tls_(asio::ssl::context::tls_server)
        , handler_(handler)
        , maximumBody_(options.maximumBodyBytes)
        , acceptor_(context_) {
        tls_.set_options(asio::ssl::context::default_workarounds | asio::ssl::context::no_tlsv1 |
                         asio::ssl::context::no_tlsv1_1);
        tls_.use_certificate_chain_file(options.certificateChain.string());
        tls_.use_private_key_file(options.privateKey.string(), asio::ssl::context::pem);
        const tcp::endpoint endpoint(asio::ip::make_address(options.host), options.port);
        acceptor_.open(endpoint.protocol());
        acceptor_.set_option(tcp::acceptor::reuse_address(true));
        acceptor_.bind(endpoint);
        acceptor_.listen();
        port_ = acceptor_.local_endpoint().port();
        asio::co_spawn(context_, accept(), asio::detached);
        for (unsigned index = 0; index < kThreads; ++index)
            threads_.emplace_back([this] { context_.run(); });
    }
    ~Listener() {
        context_.stop();
        for (auto& thread : threads_)
            thread.join();
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    std::uint16_t port() const { return port_; }
    void serve() {
        asio::co_spawn(context_, accept(), asio::detached);
        for (unsigned index = 0; index < kThreads; ++index)
            threads_.emplace_back([this] { context_.run(); });
    }

  private:
    asio::awaitable<void> accept() {
        for (;;) {
            error_code error;
            auto socket = co_await acceptor_.async_accept(asio::any_io_executor(asio::make_strand(context_)),
                                                          asio::redirect_error(asio::use_awaitable, error));
            if (error) {
                asio::steady_timer pause(context_, std::chrono::milliseconds(50));
                co_await pause.async_wait(asio::redirect_error(asio::use_awaitable, error));
                continue;
            }
            const auto executor = socket.get_executor();
            asio::co_spawn(executor, converse(std::move(socket), tls_, handler_, maximumBody_),
                           asio::detached);
        }
    }

    asio::ssl::context tls_;
    HttpHandler& handler_;
    std::uint64_t maximumBody_;
    std::uint16_t port_ = 0;
    asio::io_context context_; ///< ends before the members above, which its coroutines use
    tcp::acceptor acceptor_;
    std::vector<std::thread> threads_;
};

HttpServer::HttpServer(const Options& options, HttpHandler& handler)
    : listener_(std::make_unique<Listener>(options, handler)) {}

HttpServer::~HttpServer() = default;

std::uint16_t HttpServer::port() const { return listener_->port(); }

void HttpServer::serve() { listener_->serve(); }

} // namespace norvane::sandbox
