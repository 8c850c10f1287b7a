#include "tests/sandbox/SampleEnvelope.h"
#include "tests/sandbox/SandboxFixture.h"

#include <future>

namespace norvane::sandbox {

namespace {

constexpr int kPartialFile = 18;
constexpr int kTimedOut = 28;
constexpr int kGotNothing = 52;
constexpr int kSendFailed = 55;
constexpr int kReceiveFailed = 56;

class FaultsOnTheWire : public SandboxFixture {
  protected:
    Reply upload() {
        return client.send("POST", "envelopes", SampleEnvelope().body(), SampleEnvelope::contentType());
    }
    /// The connection ended before the answer did; how libcurl says so depends on how far it came.
    static bool isCut(const Reply& reply) {
        return reply.failure == kPartialFile || reply.failure == kGotNothing ||
               reply.failure == kSendFailed || reply.failure == kReceiveFailed;
    }
};

} // namespace

TEST_F(FaultsOnTheWire, StatusAndPortalAnswerWithoutEffect) {
    service.addFault(
        "POST /v2/accounts/*/envelopes status=503 body={\"errorCode\":\"BUSY\",\"message\":\"later\"}");
    service.addFault("POST /v2/accounts/*/envelopes portal");
    EXPECT_EQ(upload().errorCode(), "BUSY");
    const Reply portal = upload();
    EXPECT_EQ(portal.status, 200);
    EXPECT_EQ(portal.contentType, "text/html; charset=utf-8");
    EXPECT_TRUE(service.receivedEnvelopes().empty());
    EXPECT_EQ(upload().status, 201) << "the faults are used up";
}

TEST_F(FaultsOnTheWire, CutRequestIsResetAndHasNoEffect) {
    service.addFault("POST /v2/accounts/*/envelopes cut-request=1000");
    EXPECT_TRUE(isCut(upload()));
    ASSERT_TRUE(service.waitForRequests(1));
    const LoggedRequest request = service.requests().front();
    EXPECT_GE(request.bodySize, 1000U);
    EXPECT_LT(request.bodySize, SampleEnvelope().body().size());
    EXPECT_EQ(request.status, 0);
    EXPECT_EQ(request.fault, "cut-request");
    EXPECT_TRUE(service.receivedEnvelopes().empty());
    EXPECT_EQ(upload().status, 201);
}

TEST_F(FaultsOnTheWire, CutAnswerAndNoAnswerHaveTheirEffect) {
    service.addFault("POST /v2/accounts/*/envelopes cut-answer=150");
    const Reply half = upload();
    EXPECT_TRUE(isCut(half)) << half.failure;
    EXPECT_EQ(half.status, 201);
    service.addFault("POST /v2/accounts/*/envelopes cut-answer=0");
    EXPECT_TRUE(isCut(upload()));
    service.addFault("POST /v2/accounts/*/envelopes apply-close");
    EXPECT_TRUE(isCut(upload()));
    service.addFault("POST /v2/accounts/*/envelopes apply-hang");
    auto unanswered = std::async(std::launch::async, [this] { return upload(); });
    ASSERT_TRUE(service.waitForRequests(4));
    EXPECT_EQ(service.receivedEnvelopes().size(), 4U);
    service.stop();
    EXPECT_NE(unanswered.get().failure, 0);
}

TEST_F(FaultsOnTheWire, HangingConnectionsEndWithTheService) {
    service.addFault("GET /v2/accounts/*/folders hang");
    auto reply = std::async(std::launch::async, [this] { return client.get("folders"); });
    ASSERT_TRUE(service.waitForRequests(1));
    EXPECT_EQ(service.requests().front().status, 0);
    service.stop();
    EXPECT_NE(reply.get().failure, 0);
}

TEST_F(FaultsOnTheWire, DelayHoldsBackOneAnswerOnly) {
    service.addFault("GET /v2/accounts/*/folders delay=300");
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(client.get("folders").status, 200);
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(300));
    client.timeOutAfter(50);
    service.addFault("GET /v2/accounts/*/folders delay=60000");
    EXPECT_EQ(client.get("folders").failure, kTimedOut);
}

TEST_F(FaultsOnTheWire, AreSetAndRequestsReadOverTheService) {
    const std::string fault = R"([{"method":"GET","path":"/v2/**","kind":"status","status":500,"nth":2}])";
    EXPECT_EQ(client.sendWith({}, "POST", "/sandbox/faults", fault).status, 201);
    EXPECT_EQ(client.sendWith({}, "POST", "/sandbox/faults", R"([{"kind":"hang"},{"kind":"?"}])").status,
              400);
    EXPECT_EQ(client.get("/sandbox/faults").json().array("faults").size(), 1U) << "all of a list or none";
    EXPECT_EQ(client.get("folders").status, 200);
    EXPECT_EQ(client.get("settings").status, 500);
    const Json requests = client.get("/sandbox/requests").json();
    ASSERT_EQ(requests.array("requests").size(), 2U);
    const Json second = requests.array("requests")[1];
    EXPECT_EQ(second.text("target"), "/v2/accounts/" + user().accountId + "/settings");
    EXPECT_EQ(second.find("number")->asInteger(), 2);
    EXPECT_EQ(second.write().find(user().apiPassword), std::string::npos) << "secrets are not told on";
    client.sendWith({}, "POST", "/sandbox/faults", fault);
    client.sendWith({}, "DELETE", "/sandbox/faults");
    EXPECT_TRUE(client.get("/sandbox/faults").json().array("faults").empty());
    ASSERT_EQ(upload().status, 201);
    EXPECT_EQ(client.get("/sandbox/envelopes").json().array("envelopes").size(), 1U);
}

TEST_F(FaultsOnTheWire, ManyClientsAndServicesAtOnce) {
    const TemporaryFolder otherFolder;
    SandboxService other(optionsFor(otherFolder.path()));
    other.start();
    std::vector<std::future<int>> clients;
    for (int index = 0; index < 12; ++index)
        clients.push_back(std::async(std::launch::async, [&, index] {
            Client mine(index % 2 == 0 ? service : other);
            int answered = 0;
            for (int turn = 0; turn < 5; ++turn)
                answered +=
                    mine.send("POST", "envelopes", SampleEnvelope().body(), SampleEnvelope::contentType())
                        .status == 201;
            return answered;
        }));
    for (auto& each : clients)
        EXPECT_EQ(each.get(), 5);
    EXPECT_EQ(service.receivedEnvelopes().size(), 30U);
    EXPECT_EQ(other.receivedEnvelopes().size(), 30U);
}

TEST(SandboxStart, SaysWhyItCannot) {
    const TemporaryFolder folder;
    SandboxService first(SandboxService::Options{.dataFolder = folder.path() / "a", .faults = {}});
    first.start();
    SandboxService::Options taken;
    taken.dataFolder = folder.path() / "b";
    taken.port = first.port();
    EXPECT_THROW(SandboxService(taken).start(), std::runtime_error);
    SandboxService::Options nowhere;
    nowhere.dataFolder = "/proc/nothing/here";
    EXPECT_THROW(SandboxService(nowhere).start(), std::exception);
}

} // namespace norvane::sandbox
