#pragma once

#include "tests/support/Certificates.h"
#include "tests/support/Event.h"
#include "tests/support/FakeReachability.h"
#include "tests/support/KitFixture.h"
#include "tests/support/TlsServer.h"

#include <norvane/api/NVESApiClient.h>
#include <norvane/api/NVESErrors.h>
#include <norvane/api/NVESRequest.h>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace norvane {

/// The real client over the real session, and a server that answers what the test says ("{}" at first).
class ApiFixture : public KitFixture {
  protected:
    struct Outcome {
        NVESResult result;
        std::optional<NVMError> error;
    };

    void SetUp() override {
        KitFixture::SetUp();
        server_ = std::make_unique<TlsServer>(authority_.issue(), [this](const ReceivedRequest& request) {
            if (answer_) return answer_(request);
            const std::lock_guard lock(mutex_);
            return reply_;
        });
    }

    void adjust(Platform& given, PlatformOptions& options) override {
        options.trustAnchorFile = home_.file("authority.pem", authority_.certificate());
        given.reachability = reachability_;
    }

    void answerWith(ServerReply reply) {
        const std::lock_guard lock(mutex_);
        reply_ = std::move(reply);
    }

    Url baseURL() const { return *Url::parse(server_->baseAddress() + "/restapi"); }
    std::shared_ptr<NVESApiClient> client() const { return NVESApiClient::withBaseURL(baseURL()); }

    /// Waits for whatever `start` begins and hands its completion to.
    Outcome wait(const std::function<void(NVESCompletion)>& start) {
        const auto done = std::make_shared<Event>();
        const auto outcome = std::make_shared<Outcome>();
        start([=](const NVESResult& result, const std::optional<NVMError>& error) {
            *outcome = {result, error};
            done->set();
        });
        if (!done->wait()) ADD_FAILURE() << "the request did not end";
        return *outcome;
    }
    Outcome call(const NVESRequest& request) {
        return wait(
            [&](NVESCompletion completion) { client()->requestWithPath(request, std::move(completion)); });
    }

    ReceivedRequest lastRequest() const {
        const auto requests = server_->requests();
        EXPECT_FALSE(requests.empty()) << "nothing arrived";
        return requests.empty() ? ReceivedRequest() : requests.back();
    }

    CertificateAuthority authority_;
    std::shared_ptr<FakeReachability> reachability_ = std::make_shared<FakeReachability>();
    TlsServer::Handler answer_; ///< set before the first request; null: what `answerWith` said last

  private:
    std::mutex mutex_; ///< guards `reply_`
    ServerReply reply_ = ServerReply::with(200, "{}");

  protected:
    std::unique_ptr<TlsServer> server_; ///< goes first
};

} // namespace norvane
