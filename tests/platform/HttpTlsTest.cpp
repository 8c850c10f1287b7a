#include "tests/support/HttpFixture.h"

#include <cstdlib>

namespace norvane {
namespace {

class HttpTls : public HttpFixture {
  protected:
    void serveAs(const ServerIdentity& identity) {
        serve(identity, [](const ReceivedRequest&) { return ServerReply::with(200); });
    }
    Result<HttpResponse> ask(const CertificatePolicy& policy) {
        auto request = get("/");
        request.certificates = policy;
        return send(std::move(request));
    }
    /// The description of the refusal, after making sure that it is one and that nothing was sent.
    std::string refusal(const CertificatePolicy& policy = {}) {
        const auto before = server->requests().size();
        const auto result = ask(policy);
        EXPECT_TRUE(failedWith(result, TransportError::CertificateRefused));
        EXPECT_EQ(server->requests().size(), before);
        return result ? "" : result.error().localizedDescription();
    }
    CertificatePolicy pinned(std::string_view pem, bool allowsInvalid = false) {
        return {home.file("pin.pem", pem).string(), allowsInvalid, !allowsInvalid};
    }

    const CertificatePolicy anything{std::nullopt, true, false};
};

TEST_F(HttpTls, AcceptsWhatTheOnlyTrustedAuthorityIssued) {
    serveAs(authority.issue());
    EXPECT_TRUE(ask({}));
    serveAs(CertificateAuthority("Stranger").issue());
    EXPECT_NE(refusal().find("not trusted"), std::string::npos);
    EXPECT_TRUE(ask(anything));
}

TEST_F(HttpTls, SaysWhyACertificateIsRefused) {
    serveAs(authority.issue({{"localhost"}, std::chrono::hours(-48), std::chrono::hours(-24)}));
    EXPECT_NE(refusal().find("expired"), std::string::npos);
    serveAs(authority.issue({{"localhost"}, std::chrono::hours(24), std::chrono::hours(48)}));
    EXPECT_NE(refusal().find("not valid yet"), std::string::npos);
    serveAs(authority.issue({{"elsewhere.example"}}));
    EXPECT_NE(refusal().find("another server"), std::string::npos);
    EXPECT_FALSE(ask({std::nullopt, true, true})) << "the name counts unless told otherwise";
    EXPECT_TRUE(ask({std::nullopt, false, false}));
    serveAs(selfSignedIdentity());
    EXPECT_NE(refusal().find("itself"), std::string::npos);
}

TEST_F(HttpTls, WantsThePinBesidesAllElse) {
    const auto identity = authority.issue();
    const auto own = pinned(identity.certificateChain);
    serveAs(identity);
    EXPECT_TRUE(ask(own));
    EXPECT_TRUE(ask(pinned(authority.certificate()))) << "an issuer's certificate may be pinned";
    const auto other = pinned(authority.issue().certificateChain);
    EXPECT_NE(refusal(other).find("expected"), std::string::npos);
    EXPECT_NE(refusal(pinned(authority.issue().certificateChain, true)).find("expected"), std::string::npos);
    EXPECT_NE(refusal(pinned("not a certificate")).find("file"), std::string::npos);
}

TEST_F(HttpTls, DoesNotTakeAPinForVerification) {
    const auto alone = selfSignedIdentity({{"localhost"}, std::chrono::hours(-48), std::chrono::hours(-24)});
    serveAs(alone);
    refusal(pinned(alone.certificateChain));
    EXPECT_TRUE(ask(pinned(alone.certificateChain, true)));
}

TEST_F(HttpTls, IsNotFooledByAPinShownBesideAnotherCertificate) {
    const auto expected = authority.issue();
    for (auto impostor : {authority.issue(), selfSignedIdentity()}) {
        impostor.certificateChain += expected.certificateChain + authority.certificate();
        serveAs(impostor);
        refusal(pinned(expected.certificateChain));
        refusal(pinned(expected.certificateChain, true));
    }
    refusal(pinned(authority.certificate(), true));
}

TEST_F(HttpTls, NeverUsesAConnectionOfAnotherPolicy) {
    const auto stranger = CertificateAuthority("Stranger").issue();
    serveAs(stranger);
    EXPECT_TRUE(ask(anything));
    refusal();
    EXPECT_TRUE(ask(pinned(stranger.certificateChain, true)));
    refusal(pinned(authority.certificate(), true)); // the same file name, another certificate
    const auto connections = server->connectionCount();
    EXPECT_TRUE(ask(anything));
    EXPECT_TRUE(ask(pinned(stranger.certificateChain, true)));
    EXPECT_EQ(server->connectionCount(), connections) << "each policy keeps its own connection";
    for (int i = 0; i < 10; ++i)
        refusal(pinned(authority.issue().certificateChain, true)); // lanes are dropped
    EXPECT_TRUE(ask(anything));
    refusal();
}

TEST_F(HttpTls, WritesNoKeys) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto keys = home.path() / "keys";
    EXPECT_EXIT(
        {
            ::setenv("SSLKEYLOGFILE", keys.c_str(), 1);
            session = makeSession();
            serveAs(authority.issue());
            const bool answered = ask({}).ok();
            std::_Exit(answered && !std::filesystem::exists(keys) ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace norvane
