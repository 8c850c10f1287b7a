#include "sandbox/HttpServer.h"

#include "sandbox/FaultAnswer.h"

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
constexpr auto kGoodbyeTime = std::chrono::seconds(5);
constexpr auto kIdleTime = std::chrono::minutes(5);
constexpr std::uint32_t kMaximumHeaderBytes = 65'536;
constexpr unsigned kThreads = 4;
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

    /// What becomes of a request once it has had its effect.
    struct Outcome {
        enum class End { Answer, Reset, Hang };
        End end = End::Reset;
        std::string text; ///< of the answer, as much of it as is to be sent
        int status = 0;
        bool keepAlive = false;
        bool orderly = true; ///< the connection's end is announced to the peer
    };

    /// True when the connection may serve another request.
    asio::awaitable<bool> serveOne() {
        Parser parser;
        parser.header_limit(kMaximumHeaderBytes);
        parser.body_limit(maximumBody_);
        error_code error;
        lowest().expires_after(kIdleTime);
        co_await http::async_read_header(stream_, buffer_, parser,
                                         asio::redirect_error(asio::use_awaitable, error));
        if (error) {
            co_await refuse(error);
            co_return false;
        }
        Request request = headOf(parser, fromLoopback_);
        splitTarget(request);
        const HttpHandler::Plan plan = handler_.begin(request);
        request.number = plan.number;
        Fault none;
        none.kind = Fault::Kind::None;
        const Outcome outcome = co_await outcomeOf(parser, request, plan.fault.value_or(none));
        handler_.finished(plan, request, bodyBytes_, outcome.status);
        const bool keep = co_await conclude(outcome);
        co_return keep;
    }

    asio::awaitable<Outcome> outcomeOf(Parser& parser, Request& request, Fault fault) {
        using Kind = Fault::Kind;
        Outcome outcome;
        const bool whole = co_await readBody(parser, fault);
        if (!whole) co_return outcome;
        request.body = std::move(parser.get().body());
        if (fault.delay.count() > 0) co_await pause(fault.delay);
        if (fault.kind == Kind::Hang || fault.kind == Kind::ApplyThenHang) outcome.end = Outcome::End::Hang;
        if (fault.kind == Kind::Hang) co_return outcome;
        const bool bad = fault.kind == Kind::Status || fault.kind == Kind::Portal;
        const Answer answer = bad ? answerOf(fault) : handler_.handle(request);
        if (fault.kind == Kind::ApplyThenClose || fault.kind == Kind::ApplyThenHang) co_return outcome;
        outcome.end = Outcome::End::Answer;
        outcome.status = answer.status;
        outcome.orderly = fault.kind != Kind::CutAnswer;
        outcome.keepAlive = parser.get().keep_alive() && outcome.orderly;
        outcome.text = serialized(answer, outcome.keepAlive, request.method != "HEAD");
        if (!outcome.orderly) outcome.text.resize(std::min<std::size_t>(outcome.text.size(), fault.bytes));
        co_return outcome;
    }

    asio::awaitable<bool> conclude(const Outcome& outcome) {
        if (outcome.end == Outcome::End::Reset) reset();
        lowest().expires_never();
        if (outcome.end == Outcome::End::Hang) co_await waitForPeer();
        if (outcome.end != Outcome::End::Answer) co_return false;
        const bool sent = co_await send(outcome.text);
        if (sent && !outcome.keepAlive && outcome.orderly) co_await sayGoodbye();
        co_return sent&& outcome.keepAlive;
    }

    /// False when the connection ended, or is to be cut, before the body was whole.
    asio::awaitable<bool> readBody(Parser& parser, const Fault& fault) {
        const bool cuts = fault.kind == Fault::Kind::CutRequest;
        bodyBytes_ = 0;
        const auto expect = parser.get().find(http::field::expect);
        const bool asked = expect != parser.get().end() && beast::iequals(expect->value(), "100-continue");
        if (asked) co_await send("HTTP/1.1 100 Continue\r\n\r\n");
        error_code error;
        while (!error && !parser.is_done() && !(cuts && bodyBytes_ >= fault.bytes)) {
            lowest().expires_after(kIdleTime);
            co_await http::async_read_some(stream_, buffer_, parser,
                                           asio::redirect_error(asio::use_awaitable, error));
            bodyBytes_ = parser.get().body().size();
        }
        co_return !error && !cuts;
    }

    asio::awaitable<bool> send(std::string text) {
        error_code error;
        lowest().expires_after(kIdleTime);
        co_await asio::async_write(stream_, asio::buffer(text),
                                   asio::redirect_error(asio::use_awaitable, error));
        co_return !error;
    }

    /// Answers what cannot be read as a request. A peer that is still sending would lose the answer to a
    /// reset, so it gets time to stop.
    asio::awaitable<void> refuse(error_code error) {
        Answer answer = errorAnswer(400, "MALFORMED_REQUEST", error.message());
        const bool tooLarge = error == http::error::body_limit;
        if (tooLarge) answer = errorAnswer(413, "REQUEST_TOO_LARGE", "The body is too large.");
        const bool ended = error == http::error::end_of_stream || error == http::error::partial_message;
        const auto& category = http::make_error_code(http::error::end_of_stream).category();
        if (ended || error.category() != category) co_return;
        co_await send(serialized(answer, false, true));
        lowest().expires_after(kGoodbyeTime);
        co_await waitForPeer();
    }

    asio::awaitable<void> pause(std::chrono::milliseconds time) {
        error_code error;
        lowest().expires_never();
        timer_.expires_after(time);
        co_await timer_.async_wait(asio::redirect_error(asio::use_awaitable, error));
    }

    /// Reads and forgets what the peer still sends, until it closes or the time set before is over.
    asio::awaitable<void> waitForPeer() {
        error_code error;
        char ignored[16'384];
        while (!error)
            co_await stream_.async_read_some(asio::buffer(ignored),
                                             asio::redirect_error(asio::use_awaitable, error));
    }

    asio::awaitable<void> sayGoodbye() {
        error_code error;
        lowest().expires_after(kGoodbyeTime);
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
        listen(tcp::endpoint(asio::ip::make_address(options.host), options.port));
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
    void listen(const tcp::endpoint& endpoint) {
        acceptor_.open(endpoint.protocol());
        acceptor_.set_option(tcp::acceptor::reuse_address(true));
        boost::system::error_code problem;
        acceptor_.bind(endpoint, problem);
        if (problem)
            throw std::runtime_error("cannot listen on " + endpoint.address().to_string() + ":" +
                                     std::to_string(endpoint.port()) + ": " + problem.message());
        acceptor_.listen();
        port_ = acceptor_.local_endpoint().port();
    }

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
