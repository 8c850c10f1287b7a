#include "tests/support/FakeHttpSession.h"
#include "tests/support/KitFixture.h"

#include <norvane/api/NVESEnvelopes.h>
#include <norvane/sdk/NVMAccount.h>
#include <norvane/sdk/NVMCredentials.h>
#include <norvane/store/EnvelopeUploader.h>

#include <future>

namespace norvane {
namespace {

class ServiceEnvelopeUploaderTest : public KitFixture {
  protected:
    void adjust(Platform& given, PlatformOptions&) override {
        http_ = std::make_shared<FakeHttpSession>(home_.path());
        given.http = http_;
    }
    void SetUp() override {
        KitFixture::SetUp();
        const auto account = NVMAccount::withApiPassword("p", "u", "User", "u@x.y", "1",
                                                         *Url::parse("https://service.example"), "key");
        ASSERT_FALSE(NVMCredentials::persistCredentialsForAccount(*account));
    }
    /// What is known of transaction "T1" when the service answers so.
    Result<std::map<std::string, std::string>> lookUp(const std::string& body) {
        http_->enqueue(HttpResponse{200, {}, Data(body), {}});
        std::promise<Result<std::map<std::string, std::string>>> answer;
        EnvelopeUploader::service()->lookUp({"T1"}, [&](auto found) { answer.set_value(std::move(found)); });
        return answer.get_future().get();
    }
    EnvelopeUploader::Answer upload(Result<HttpResponse> response) {
        http_->enqueue(std::move(response));
        std::promise<EnvelopeUploader::Answer> answer;
        EnvelopeUploader::service()->upload(std::make_shared<NVESEnvelopeDefinition>(),
                                            [&](auto given) { answer.set_value(std::move(given)); });
        return answer.get_future().get();
    }

    std::shared_ptr<FakeHttpSession> http_;
};

TEST_F(ServiceEnvelopeUploaderTest, TakesAnEnvelopeForUnknownOnlyWhenTheServiceSaysSo) {
    const std::map<std::string, std::string> none;
    EXPECT_EQ(*lookUp(R"({"envelopeTransactionStatuses":[]})"), none);
    EXPECT_EQ(*lookUp(R"({"resultSetSize":"0"})"), none);
    EXPECT_EQ(*lookUp(R"({"envelopeTransactionStatuses":[{"transactionId":"T2","envelopeId":"E"}]})"), none);
    EXPECT_EQ(
        lookUp(R"({"envelopeTransactionStatuses":[{"transactionId":"t1","envelopeId":"E"}]})")->at("T1"),
        "E");
    EXPECT_EQ(lookUp(R"({"envelopes":[{"transactionId":"T1","envelopeId":"E"}],)"
                     R"("envelopeTransactionStatuses":[{"transactionId":"T1"}]})")
                  ->at("T1"),
              "E");
    for (const char* unclear : {"{}", "[]", "<html>", "",
                                R"({"envelopeTransactionStatuses":[{"transactionId":"T1","envelopeId":""}]})",
                                R"({"envelopeTransactionStatuses":[{"transactionId":"T1"}]})"})
        EXPECT_FALSE(lookUp(unclear).ok()) << unclear;
}

TEST_F(ServiceEnvelopeUploaderTest, TakesAnUploadForRefusedOnlyWhenTheServiceRefusedIt) {
    const auto answered = [](int status, const char* body) {
        return HttpResponse{status, {}, Data(body), {}};
    };
    EXPECT_EQ(upload(answered(201, R"({"envelopeId":"E"})")).envelopeId, "E");
    const auto refused = upload(answered(400, R"({"errorCode":"X","message":"No such recipient."})"));
    EXPECT_TRUE(refused.isSettled);
    EXPECT_EQ(refused.error->localizedDescription(), "Request failed (400): No such recipient.");
    for (const int unclear : {302, 408, 500, 503})
        EXPECT_FALSE(upload(answered(unclear, "")).isSettled) << unclear;
    for (const char* unclear : {"{}", R"({"envelopeId":""})", "<html>", ""})
        EXPECT_FALSE(upload(answered(200, unclear)).isSettled) << unclear;
}

} // namespace
} // namespace norvane
