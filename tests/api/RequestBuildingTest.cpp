#include "tests/api/ApiFixture.h"

#include <norvane/api/NVESConfiguration.h>
#include <norvane/api/NVESQueryParamCollection.h>
#include <norvane/api/NVESSanitizer.h>
#include <norvane/platform/DateFormat.h>
#include <norvane/platform/NVMException.h>

namespace norvane {
namespace {

class RequestBuilding : public ApiFixture {
  protected:
    /// The target that a request for the path has on the wire.
    std::string targetOf(const NVESRequest& request) {
        EXPECT_FALSE(call(request).error);
        return lastRequest().target();
    }
    static Value collection(const char* format) {
        return Value::object(
            std::make_shared<NVESQueryParamCollection>(NVESQueryParamCollection{{"x", "y&z"}, format}));
    }
};

TEST_F(RequestBuilding, FillsThePathAndResolvesItBelowTheBaseAddress) {
    EXPECT_EQ(targetOf({.path = "/accounts/{accountId}/envelopes", .pathParams = {{"accountId", "a b"}}}),
              "/restapi/accounts/a%20b/envelopes");
    EXPECT_EQ(targetOf({.path = "/a/{id}/{id}", .pathParams = {{"id", "../x?y#z%2e"}}}),
              "/restapi/a/..%2Fx%3Fy%23z%252e/{id}");
}

TEST_F(RequestBuilding, EscapesQueryValuesAndJoinsThemAfterwards) {
    const Date date = *parseIso8601("2024-02-29T12:00:00Z");
    EXPECT_EQ(targetOf({.path = "/q", .queryParams = {{"b c", "1&2"}, {"a", Array{1, "x"}}, {"d", date}}}),
              "/restapi/q?a=1%2Cx&b%20c=1%262&d=2024-02-29T12%3A00%3A00.000Z");
    EXPECT_EQ(targetOf({.path = "/q", .queryParams = {{"k", collection("csv")}}}), "/restapi/q?k=x,y%26z");
    EXPECT_EQ(targetOf({.path = "/q", .queryParams = {{"k", collection("pipes")}}}), "/restapi/q?k=x|y%26z");
    EXPECT_EQ(targetOf({.path = "/q", .queryParams = {{"k", collection("multi")}}}),
              "/restapi/q?k=x&k=y%26z");
}

TEST_F(RequestBuilding, WritesBodiesByTheirContentType) {
    call({.path = "/b",
          .method = "POST",
          .body = Dictionary{{"a", Array{1, "b"}}},
          .requestContentType = "application/json"});
    EXPECT_EQ(lastRequest().body, R"({"a":[1,"b"]})");
    EXPECT_EQ(lastRequest().header("Content-Type"), "application/json");
    call({.path = "/b",
          .method = "DELETE",
          .body = R"({ "as": "it is" })",
          .requestContentType = "application/json"});
    EXPECT_EQ(lastRequest().body, R"({ "as": "it is" })");
    call({.path = "/b",
          .method = "POST",
          .formParams = {{"k", "a b"}, {"l", 2}},
          .requestContentType = "application/x-www-form-urlencoded"});
    EXPECT_EQ(lastRequest().body, "k=a%20b&l=2");
    EXPECT_EQ(lastRequest().header("Content-Type"), "application/x-www-form-urlencoded");
    wait([&](NVESCompletion completion) {
        client()->imageWithCompletionBlock({.path = "/b", .method = "PUT", .requestContentType = "image/png"},
                                           Data("\x89PNG\0", 5), std::move(completion));
    });
    EXPECT_EQ(lastRequest().body, std::string("\x89PNG\0", 5));
    EXPECT_EQ(lastRequest().method() + " " + *lastRequest().header("Content-Type"), "PUT image/png");
}

TEST_F(RequestBuilding, IdentifiesTheKitAndKeepsNoCookies) {
    answerWith(ServerReply::with(200, "{}", {{"Set-Cookie", "a=b; Secure"}}));
    const auto sender = client();
    sender->setHeaderValue("kept", "X-Default");
    sender->setHeaderValue("overruled", "accept");
    for (int round = 0; round < 2; ++round)
        wait([&](NVESCompletion completion) {
            sender->requestWithPath(
                {.path = "/h", .headerParams = {{"X-One", "1"}}, .responseContentType = "application/json"},
                std::move(completion));
        });
    const ReceivedRequest request = lastRequest();
    EXPECT_EQ(request.header("Norvane-Native-iOS-SDK"), "2.1.5");
    EXPECT_EQ(request.header("NorvaneSDK"), "Native");
    EXPECT_EQ(request.header("X-One"), "1");
    EXPECT_EQ(request.header("X-Default"), "kept");
    EXPECT_EQ(request.header("Accept"), "application/json");
    EXPECT_FALSE(request.header("Cookie"));
    bool cookieSeen = false;
    for (const auto& [name, value] : sender->HTTPResponseHeaders())
        cookieSeen |= value == "a=b; Secure";
    EXPECT_TRUE(cookieSeen);
}

TEST_F(RequestBuilding, AppliesTheAuthSettingsThatARequestNames) {
    auto& settings = NVESConfiguration::sharedConfig().authSettings;
    settings = {{"key", Dictionary{{"in", "header"}, {"key", "X-Key"}, {"value", "k"}}},
                {"token", Dictionary{{"in", "query"}, {"key", "t"}, {"value", "v"}}},
                {"empty", Dictionary{{"in", "query"}, {"key", "e"}, {"value", ""}}},
                {"other", Dictionary{{"in", "query"}, {"key", "o"}, {"value", "o"}}}};
    EXPECT_EQ(targetOf({.path = "/a", .authSettings = {"key", "token", "empty", "missing"}}),
              "/restapi/a?t=v");
    EXPECT_EQ(lastRequest().header("X-Key"), "k");
    settings.clear();
}

TEST_F(RequestBuilding, RefusesWhatCannotGoIntoARequestWithoutSendingIt) {
    for (const char* id : {"", ".", "..", "a\nb"}) {
        const auto outcome = call({.path = "/x/{id}", .pathParams = {{"id", id}}});
        ASSERT_TRUE(outcome.error) << id;
        EXPECT_EQ(outcome.error->domain, kRequestErrorDomain);
        EXPECT_EQ(outcome.error->failureReason(), kInvalidPathParameterReason);
        EXPECT_EQ(outcome.error->userInfo.at(std::string(kTransportRequestSentKey)), Value(false));
    }
    const auto injected = call({.path = "/x", .headerParams = {{"X-A", "1\r\nX-B: 2"}}});
    ASSERT_TRUE(injected.error);
    EXPECT_EQ(injected.error->code, static_cast<std::int64_t>(TransportError::Refused));
    EXPECT_THROW(client()->requestWithPath({.path = "/x", .queryParams = {{"k", Data("b", 1)}}}, nullptr),
                 NVMException);
    EXPECT_TRUE(server_->requests().empty());
    EXPECT_EQ(NVESApiClient::requestQueueSize(), 0u);
}

TEST(Sanitizer, ChoosesHeadersAmongMimeTypes) {
    const NVESSanitizer sanitizer;
    EXPECT_EQ(sanitizer.selectHeaderAccept({"text/html", "Application/vnd.x+JSON"}), "application/json");
    EXPECT_EQ(sanitizer.selectHeaderAccept({"Text/HTML", "image/png"}), "text/html, image/png");
    EXPECT_EQ(sanitizer.selectHeaderAccept({}), "");
    EXPECT_EQ(sanitizer.selectHeaderContentType({}), "application/json");
    EXPECT_EQ(sanitizer.selectHeaderContentType({"Image/PNG", "text/plain"}), "image/png");
    try {
        sanitizer.sanitizeForSerialization(Array{Data("b", 1)});
        FAIL();
    } catch (const NVMException& exception) {
        EXPECT_EQ(exception.name(), "InvalidObjectArgumentException");
        EXPECT_EQ(exception.reason(), "*** The argument object: bytes is invalid");
    }
}

} // namespace
} // namespace norvane
