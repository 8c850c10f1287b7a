#include "tests/support/HttpFixture.h"

namespace norvane {
namespace {

using namespace std::chrono_literals;
using HttpConnection = HttpFixture;

std::optional<bool> requestSent(const Result<HttpResponse>& result) {
    if (result) return std::nullopt;
    const auto& facts = result.error().userInfo;
    const auto found = facts.find(kTransportRequestSentKey);
    return found == facts.end() ? std::nullopt : found->second.asBool();
}

TEST_F(HttpConnection, SendsExactlyWhatItWasGiven) {
    serve([](const ReceivedRequest&) { return ServerReply::with(200); });
    auto request = post("/a/../b%2F?c=d%20e", std::string(2 << 20, 'x'));
    request.headers = {
        {"X-Second", "2"}, {"X-Empty", ""}, {"Content-Type", "text/plain"}, {"X-First", " 1 "}};
    ASSERT_TRUE(send(std::move(request)));
    const auto received = server->requests().at(0);
    EXPECT_EQ(received.head,
              "POST /a/../b%2F?c=d%20e HTTP/1.1\r\nHost: localhost:" + std::to_string(server->port()) +
                  "\r\nAccept: */*\r\nX-Second: 2\r\nX-Empty:\r\nContent-Type: text/plain\r\n"
                  "X-First: 1\r\nContent-Length: 2097152\r\n\r\n");
    EXPECT_EQ(received.body, std::string(2 << 20, 'x'));
}

TEST_F(HttpConnection, FramesEveryMethodAsItShould) {
    serve([](const ReceivedRequest&) { return ServerReply::with(204); });
    for (const char* method : {"GET", "HEAD", "DELETE", "POST", "PUT", "PATCH"}) {
        ASSERT_TRUE(send(request(method, "/empty"))) << method;
        const auto received = server->requests().back();
        EXPECT_EQ(received.method(), method);
        EXPECT_EQ(received.header("Content-Length").has_value(), std::string_view(method).starts_with('P'))
            << method;
        EXPECT_EQ(received.header("Content-Type"), std::nullopt) << method;
    }
    auto request = post("/body", "gone");
    request.method = "DELETE";
    ASSERT_TRUE(send(std::move(request)));
    EXPECT_EQ(server->requests().back().method(), "DELETE");
    EXPECT_EQ(server->requests().back().body, "gone");
}

TEST_F(HttpConnection, KeepsItsConnectionButNoCookiesAndFollowsNoRedirect) {
    serve([](const ReceivedRequest&) {
        return ServerReply::with(302, "elsewhere", {{"Location", "/other"}, {"Set-Cookie", "a=b"}});
    });
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(send(get("/here"))->status, 302);
    EXPECT_EQ(server->connectionCount(), 1u);
    EXPECT_EQ(server->arrivals("/here"), 10u);
    EXPECT_EQ(server->requests().size(), 10u);
    EXPECT_EQ(server->requests().back().header("Cookie"), std::nullopt);
}

TEST_F(HttpConnection, SendsNothingTwiceWhenAKeptConnectionDies) {
    serve([](const ReceivedRequest& received) {
        if (received.target() == "/fine") return ServerReply{"HTTP/1.1 204 Fine\r\n\r\n", {}, 50ms, 1};
        return ServerReply::closing();
    });
    int number = 0;
    const auto dies = [&](HttpRequest lost) {
        PendingResponse kept[2]; // one connection to die, and one that the request could be sent on again
        for (auto& response : kept)
            session->send(get("/fine"), response.completion());
        for (auto& response : kept)
            ASSERT_TRUE(response.wait());
        const std::string target = "/lost" + std::to_string(number++);
        lost.url = *Url::parse(server->baseAddress() + target);
        const auto result = send(std::move(lost));
        EXPECT_TRUE(failedWith(result, TransportError::ConnectionLost));
        EXPECT_EQ(requestSent(result), true);
        EXPECT_EQ(server->arrivals(target), 1u) << target;
    };
    dies(post("/", "small"));
    dies(post("/", std::string(3 << 20, 'x')));
    dies(request("POST", "/"));
    dies(request("DELETE", "/"));
    dies(get("/"));
}

TEST_F(HttpConnection, TellsARequestThatCannotHaveArrivedFromOneThatMayHave) {
    serve([](const ReceivedRequest&) { return ServerReply::with(200); });
    server->closeInsideBodiesAfter(1000);
    const auto inside = send(post("/inside", std::string(32 << 20, 'x')));
    EXPECT_TRUE(failedWith(inside, TransportError::ConnectionLost));
    EXPECT_EQ(requestSent(inside), false);
    EXPECT_EQ(inside.error().userInfo.at(std::string(kTransportUrlKey)),
              Value(server->baseAddress() + "/inside"));

    const auto nobody = *Url::parse(server->baseAddress() + "/secret?token=x");
    server.reset();
    const auto refused = send({"GET", nobody});
    EXPECT_TRUE(failedWith(refused, TransportError::CouldNotConnect));
    EXPECT_EQ(requestSent(refused), false);
    EXPECT_EQ(refused.error().userInfo.at(std::string(kTransportUrlKey)).asString()->find("token"),
              std::string::npos);
}

TEST_F(HttpConnection, TakesNoCutAnswerForAWholeOne) {
    const auto whole = ServerReply::with(200, "0123456789");
    serve([&](const ReceivedRequest& received) {
        if (received.target() == "/body") return whole.cutAfter(whole.bytes.size() - 1);
        return whole.cutAfter(received.target() == "/head" ? 20 : 0);
    });
    for (const char* target : {"/body", "/head", "/nothing"}) {
        EXPECT_TRUE(failedWith(send(get(target)), TransportError::ConnectionLost)) << target;
        EXPECT_TRUE(failedWith(download(get(target)), TransportError::ConnectionLost)) << target;
    }
    EXPECT_EQ(downloadCount(), 0u);
}

TEST_F(HttpConnection, TimesOutWhenNothingMovesButNotWhileSomethingDoes) {
    const auto slow = ServerReply::with(200, "done");
    serve([&](const ReceivedRequest& received) {
        if (received.target() == "/half") return slow.cutAfter(10, ServerReply::Ending::Hangs);
        if (received.target() == "/dripping") return ServerReply{slow.bytes, {}, 1s, 3};
        return ServerReply::hanging();
    });
    for (const char* target : {"/never", "/half"}) {
        auto request = get(target);
        request.idleTimeout = 1s;
        const auto begin = std::chrono::steady_clock::now();
        const auto result = send(std::move(request));
        EXPECT_TRUE(failedWith(result, TransportError::TimedOut)) << target;
        EXPECT_EQ(requestSent(result), true);
        EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s) << target;
    }
    auto dripping = get("/dripping");
    dripping.idleTimeout = 2s;
    EXPECT_TRUE(send(std::move(dripping)));
}

TEST_F(HttpConnection, DoesNotTimeOutWhileWhatItHandedOverIsStillBeingSent) {
    serve([](const ReceivedRequest&) { return ServerReply::with(200); });
    server->readBodiesSlowly(60ms);
    auto upload = post("/slow", std::string(3'000'000, 'x')); // the system takes nearly all of it at once
    upload.idleTimeout = 1s;
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_TRUE(send(std::move(upload)));
    EXPECT_GT(std::chrono::steady_clock::now() - begin, 2s);
}

class BrokenBody final : public HttpBody {
  public:
    explicit BrokenBody(std::optional<NVMError> error)
        : error_(std::move(error)) {}
    std::uint64_t size() const override { return 1 << 20; }
    Result<std::size_t> read(char* buffer, std::size_t) override {
        if (std::exchange(begun_, true))
            return error_ ? Result<std::size_t>(*error_) : Result<std::size_t>(0u);
        *buffer = 'x';
        return std::size_t{1};
    }

  private:
    const std::optional<NVMError> error_;
    bool begun_ = false;
};

TEST_F(HttpConnection, EndsARequestWhoseBodyCannotBeRead) {
    serve([](const ReceivedRequest&) { return ServerReply::with(200); });
    const auto cause = NVMError::make("disk", 5, "The disk is gone.");
    for (const auto& broken : {std::optional<NVMError>(cause), std::optional<NVMError>()}) {
        auto request = post("/broken", "");
        request.body = std::make_shared<BrokenBody>(broken);
        const auto result = send(std::move(request));
        EXPECT_TRUE(failedWith(result, TransportError::FileError));
        EXPECT_EQ(requestSent(result), false);
        if (!broken) continue;
        const auto underlying =
            result.error().userInfo.at(std::string(kUnderlyingErrorKey)).asObject<NVMError>();
        ASSERT_TRUE(underlying);
        EXPECT_EQ(*underlying, cause);
    }
}

TEST_F(HttpConnection, BoundsAnswers) {
    const std::string header = "HTTP/1.1 200 OK\r\n";
    std::string manyHeaders = header;
    for (int i = 0; i < 400; ++i)
        manyHeaders += "X-Padding: " + std::string(1000, 'x') + "\r\n";
    serve([&](const ReceivedRequest& received) {
        if (received.target() == "/headers") return ServerReply{manyHeaders + "\r\n", {}, {}, 1};
        if (received.target() == "/told")
            return ServerReply{header + "Content-Length: 67108865\r\n\r\nx", {}, {}, 1};
        return ServerReply{
            header + "\r\n" + std::string((64 << 20) + 1, 'x'), ServerReply::Ending::Closes, {}, 1};
    });
    for (const char* target : {"/headers", "/told", "/untold"})
        EXPECT_TRUE(failedWith(send(get(target)), TransportError::TooLarge)) << target;
}

TEST_F(HttpConnection, SaysWhenADownloadCannotBeSaved) {
    serve([](const ReceivedRequest&) { return ServerReply::with(200, "content"); });
    files->remove(files->temporaryFolder());
    EXPECT_TRUE(failedWith(download(get("/file")), TransportError::FileError));
}

} // namespace
} // namespace norvane
