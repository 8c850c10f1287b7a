#include "tests/api/ApiFixture.h"

#include <norvane/api/NVESConfiguration.h>
#include <norvane/api/NVESEnvelopes.h>
#include <norvane/api/NVESLogger.h>
#include <norvane/sdk/NVMAPIErrorResponse.h>

#include <future>

namespace norvane {
namespace {

class ApiClient : public ApiFixture {
  protected:
    static NVESRequest envelope() {
        return {.path = "/e", .responseContentType = "application/json", .responseType = "NVESEnvelope"};
    }
    ~ApiClient() override {
        NVESApiClient::setCacheEnabled(false);
        NVESLogger::sharedLogger().setEnabled(false);
    }
};

TEST_F(ApiClient, HandsOverATypedResultOrAnError) {
    answerWith(ServerReply::with(200, R"({"envelopeId":"e1"})"));
    EXPECT_EQ(call(envelope()).result.record<NVESEnvelope>()->envelopeId, "e1");

    answerWith(ServerReply::with(200, "<html>portal</html>"));
    const auto portal = call(envelope());
    ASSERT_TRUE(portal.error);
    EXPECT_EQ(portal.error->code, 143553);
    EXPECT_EQ(portal.error->userInfo.at(std::string(kTransportRequestSentKey)), Value(true));

    answerWith(ServerReply::with(200, ""));
    const auto untyped =
        call({.path = "/e", .responseContentType = "application/json", .responseType = "NSObject"});
    EXPECT_FALSE(untyped.error);
    EXPECT_EQ(untyped.result.value(), Value(""));
}

TEST_F(ApiClient, CarriesTheServicesErrorBody) {
    answerWith(ServerReply::with(400, R"({"errorCode":"INVALID_CLIENTUSERID","message":"No."})"));
    const auto outcome = call(envelope());
    ASSERT_TRUE(outcome.error);
    EXPECT_EQ(outcome.error->domain, kStatusErrorDomain);
    EXPECT_EQ(outcome.error->code, 400);
    EXPECT_EQ(outcome.error->userInfo.at(std::string(kServiceResponseObjectKey))["message"], Value("No."));
    EXPECT_EQ(NVMAPIErrorResponseCode(*outcome.error), "INVALID_CLIENTUSERID");

    answerWith(ServerReply::with(503, "try later"));
    const auto plain = call(envelope());
    EXPECT_EQ(plain.error->userInfo.at(std::string(kServiceResponseObjectKey)), Value("try later"));
    EXPECT_FALSE(plain.error->userInfo.contains(std::string(kMapperErrorObjectsKey)));

    answerWith(ServerReply::with(302, "", {{"Location", "https://localhost/elsewhere"}}));
    EXPECT_EQ(call(envelope()).error->code, 302);
}

TEST_F(ApiClient, DownloadsToAFileButReadsErrorsFromTheBody) {
    NVESRequest request = envelope();
    request.responseType = "NSURL*";
    answerWith(ServerReply::with(200, "%PDF"));
    const auto outcome = call(request);
    ASSERT_TRUE(outcome.result.file());
    const auto bytes = platform().files->read(outcome.result.file()->filePath());
    EXPECT_EQ(bytes->view(), "%PDF");
    answerWith(ServerReply::with(404, R"({"errorCode":"GONE"})"));
    EXPECT_EQ(NVMAPIErrorResponseCode(*call(request).error), "GONE");
}

TEST_F(ApiClient, DropsTheResultOfACancelledRequest) {
    std::promise<void> mayAnswer;
    answer_ = [gate = mayAnswer.get_future().share()](const ReceivedRequest& request) {
        if (request.target() == "/restapi/slow") gate.wait();
        return ServerReply::with(200, "%PDF");
    };
    Event completed;
    const auto sender = client();
    const auto id = sender->requestWithPath({.path = "/slow", .responseType = "NSURL"},
                                            [&](const auto&, const auto&) { completed.set(); });
    ASSERT_TRUE(server_->waitForRequests(1));
    EXPECT_EQ(NVESApiClient::requestQueueSize(), 1u);
    NVESApiClient::cancelRequest(id);
    EXPECT_EQ(NVESApiClient::requestQueueSize(), 0u);
    mayAnswer.set_value();
    const auto other = wait([&](NVESCompletion completion) {
        const auto next = sender->requestWithPath({.path = "/next"}, std::move(completion));
        EXPECT_EQ(next, id + 1);
    });
    EXPECT_FALSE(other.error);
    restart(); // ends the session, and with it whatever is still in flight
    EXPECT_FALSE(completed.isSet());
    EXPECT_TRUE(std::filesystem::is_empty(platform().files->temporaryFolder()));
}

TEST_F(ApiClient, AsksTheCacheOnlyWhenTheHostSwitchedItOnAndTheNetworkIsThere) {
    answerWith(ServerReply::with(
        200, "{}", {{"Cache-Control", "max-age=1000"}, {"Date", "Thu, 01 Jan 2099 00:00:00 GMT"}}));
    const auto arrivals = [&] { return server_->requests().size(); };
    const NVESRequest plain{.path = "/c", .responseContentType = {}};
    call(plain);
    call(plain);
    EXPECT_EQ(arrivals(), 2u) << "off at first";

    NVESApiClient::setCacheEnabled(true);
    call(plain);
    call(plain);
    EXPECT_EQ(arrivals(), 3u);
    call({.path = "/c", .headerParams = {{"X-A", "1"}}});
    EXPECT_EQ(arrivals(), 4u) << "header parameters";

    reachability_->setStatus(0);
    const auto offline = client();
    reachability_->settle();
    EXPECT_TRUE(NVESApiClient::getOfflineState());
    wait([&](NVESCompletion completion) { offline->requestWithPath(plain, std::move(completion)); });
    EXPECT_EQ(arrivals(), 5u) << "sent all the same, past the cache";

    reachability_->setStatus(1);
    reachability_->settle();
    NVESApiClient::clearCache();
    wait([&](NVESCompletion completion) { offline->requestWithPath(plain, std::move(completion)); });
    EXPECT_EQ(arrivals(), 6u);
}

TEST_F(ApiClient, FollowsTheNetworkAndTellsTheHost) {
    std::vector<int> told; // on the monitor's thread, which `settle` waits for
    NVESApiClient::setReachabilityChangeBlock([&](int status) { told.push_back(status); });
    const auto watching = client();
    for (const int status : {-1, 0, 2}) {
        reachability_->setStatus(status);
        reachability_->settle();
        EXPECT_EQ(NVESApiClient::getReachabilityStatus(), status);
        EXPECT_EQ(NVESApiClient::getOfflineState(), status <= 0);
    }
    NVESApiClient::setReachabilityChangeBlock(nullptr);
    EXPECT_EQ(told, (std::vector{1, -1, 0, 2}));
}

TEST_F(ApiClient, MustStillSeeThePinnedCertificateWhenVerificationIsOff) {
    auto& configuration = NVESConfiguration::sharedConfig();
    configuration.verifySSL = false;
    configuration.sslCaCert = home_.file("pin.pem", CertificateAuthority("Another").certificate());
    const auto refused = call(envelope());
    configuration.sslCaCert = home_.file("pin.pem", authority_.certificate());
    const auto accepted = call(envelope());
    configuration.verifySSL = true;
    configuration.sslCaCert.reset();
    ASSERT_TRUE(refused.error);
    EXPECT_EQ(refused.error->code, static_cast<std::int64_t>(TransportError::CertificateRefused));
    EXPECT_FALSE(accepted.error);
}

TEST_F(ApiClient, TracesBodiesInTheirFrameWithoutTheirSecrets) {
    NVESLogger::sharedLogger().setEnabled(true);
    const auto file = home_.path() / "trace.log";
    NVESLogger::sharedLogger().setLoggingFile(file);
    answerWith(
        ServerReply::with(200, R"({"apiPassword":"s3cret","url":"https://sign/s3cret","status":"sent"})"));
    NVESRequest request = envelope();
    request.method = "POST";
    request.requestContentType = "application/json";
    request.headerParams = {{"X-Norvane-Authentication", R"({"Password":"s3cret"})"}};
    request.body = R"({"documents":[{"password":"s3cret","documentBase64":"czNjcmV0"}],"status":"sent"})";
    call(request);
    NVESLogger::sharedLogger().setLoggingFile(std::nullopt);
    EXPECT_TRUE(log_->contains(
        "requestWithPath: \n[DEBUG] HTTP request body \n~BEGIN~\n "
        R"({"documents":[{"documentBase64":"-8 bytes-","password":"-redacted-"}],"status":"sent"})"
        "\n~END~\n[DEBUG] HTTP response body \n~BEGIN~\n "
        R"({"apiPassword":"-redacted-","status":"sent","url":"-redacted-"})"
        "\n~END~\n"));
    EXPECT_TRUE(log_->contains("requestWithPath: /e cache disabled"));
    EXPECT_FALSE(log_->contains("s3cret"));
    EXPECT_FALSE(log_->contains("czNjcmV0"));
    const auto traced = platform().files->read(file);
    EXPECT_NE(traced->view().find("removed request id"), std::string_view::npos);
}

TEST(Configuration, MakesCredentialsOfItsSettings) {
    auto& configuration = NVESConfiguration::sharedConfig();
    configuration.apiKey = {{"a", "1"}, {"b", "2"}};
    configuration.apiKeyPrefix = {{"a", "Token"}, {"c", "Token"}};
    EXPECT_EQ(configuration.getApiKeyWithPrefix("a"), "Token 1");
    EXPECT_EQ(configuration.getApiKeyWithPrefix("b"), "2");
    EXPECT_EQ(configuration.getApiKeyWithPrefix("c"), "");
    configuration.username = "Aladdin";
    configuration.password = "open sesame";
    EXPECT_EQ(configuration.getBasicAuthToken(), "Basic QWxhZGRpbjpvcGVuIHNlc2FtZQ==");
}

} // namespace
} // namespace norvane
