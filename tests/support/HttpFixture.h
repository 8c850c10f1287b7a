#pragma once

#include "src/platform/Adapters.h"
#include "tests/support/Certificates.h"
#include "tests/support/FakeClock.h"
#include "tests/support/PendingResponse.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TlsServer.h"

#include <norvane/platform/Files.h>
#include <norvane/platform/HttpSession.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace norvane {

/// The real session, which trusts the test's authority alone, and a server of the test's own.
class HttpFixture : public ::testing::Test {
  protected:
    void SetUp() override {
        PlatformOptions options;
        options.home = home.path();
        auto folders = applicationFolders(options);
        ASSERT_FALSE(makeFolders(folders));
        files = makeLinuxFiles(folders);
        session = makeSession();
    }

    std::shared_ptr<HttpSession> makeSession() {
        return makeCurlHttpSession(files, home.file("authority.pem", authority.certificate()), clock);
    }

    void serve(TlsServer::Handler handler) { serve(authority.issue(), std::move(handler)); }
    void serve(std::optional<ServerIdentity> identity, TlsServer::Handler handler) {
        server = std::make_unique<TlsServer>(std::move(identity), std::move(handler));
    }

    HttpRequest request(const std::string& method, const std::string& target) const {
        HttpRequest made{method, *Url::parse(server->baseAddress() + target)};
        made.idleTimeout = std::chrono::seconds(10);
        return made;
    }
    HttpRequest get(const std::string& target) const { return request("GET", target); }
    HttpRequest post(const std::string& target, std::string body) const {
        HttpRequest made = request("POST", target);
        made.body = HttpBody::fromData(Data(std::move(body)));
        return made;
    }

    Result<HttpResponse> send(HttpRequest request) {
        PendingResponse pending;
        session->send(std::move(request), pending.completion());
        return pending.wait();
    }
    Result<HttpResponse> download(HttpRequest request) {
        PendingResponse pending;
        session->download(std::move(request), pending.completion());
        return pending.wait();
    }

    /// The files that downloads left behind.
    std::size_t downloadCount() const {
        std::size_t count = 0;
        for ([[maybe_unused]] const auto& entry :
             std::filesystem::directory_iterator(files->temporaryFolder()))
            ++count;
        return count;
    }

    TemporaryFolder home;
    CertificateAuthority authority;
    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    std::shared_ptr<Files> files;
    std::unique_ptr<TlsServer> server;
    std::shared_ptr<HttpSession> session; ///< goes before the server
};

/// Whether the result is that transport error.
inline ::testing::AssertionResult failedWith(const Result<HttpResponse>& result, TransportError cause) {
    if (result) return ::testing::AssertionFailure() << "answered " << result->status;
    if (result.error().domain == kTransportErrorDomain &&
        result.error().code == static_cast<std::int64_t>(cause))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << result.error().domain << " " << result.error().code << ": "
                                         << result.error().localizedDescription();
}

} // namespace norvane
