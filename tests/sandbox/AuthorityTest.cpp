#include "sandbox/Authority.h"

#include "sandbox/PrivateFile.h"
#include "tests/sandbox/SandboxFixture.h"

namespace norvane::sandbox {

namespace {

namespace fs = std::filesystem;
using std::chrono::hours;

const auto kNow = std::chrono::system_clock::now();

fs::perms modeOf(const fs::path& file) { return fs::status(file).permissions(); }

} // namespace

TEST(Authority, KeepsItsFilesPrivateAndUsesThemAgain) {
    const TemporaryFolder folder;
    const auto first = prepareAuthority(folder.path() / "tls", "127.0.0.1", kNow);
    EXPECT_EQ(modeOf(first.key), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(modeOf(folder.path() / "tls" / "ca.key"), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(modeOf(folder.path() / "tls"), fs::perms::owner_all);
    const auto chain = readFile(first.chain);
    prepareAuthority(folder.path() / "tls", "127.0.0.1", kNow + hours(24 * 30));
    EXPECT_EQ(readFile(first.chain), chain);
}

TEST(Authority, MakesAnewWhatExpiredWasDamagedOrLacksTheHost) {
    const TemporaryFolder folder;
    const auto files = prepareAuthority(folder.path(), "127.0.0.1", kNow);
    const auto authority = readFile(files.authority);
    auto chain = readFile(files.chain);
    const auto expectRemade = [&](const std::string& host, std::chrono::system_clock::time_point now) {
        prepareAuthority(folder.path(), host, now);
        EXPECT_NE(readFile(files.chain), chain);
        chain = readFile(files.chain);
    };
    expectRemade("127.0.0.1", kNow + hours(24 * 365));
    expectRemade("192.0.2.7", kNow + hours(24 * 365));
    writePrivateFile(files.key, "damaged");
    expectRemade("192.0.2.7", kNow + hours(24 * 365));
    EXPECT_EQ(readFile(files.authority), authority) << "none of this concerns the authority";
    expectRemade("192.0.2.7", kNow + hours(24 * 3650));
    EXPECT_NE(readFile(files.authority), authority);
}

TEST_F(SandboxFixture, IsTrustedThroughItsAuthorityAndNoOther) {
    const std::string path = "/sandbox/requests";
    EXPECT_EQ(client.get(path).status, 200);
    const TemporaryFolder other;
    client.trust(prepareAuthority(other.path(), "127.0.0.1", kNow).authority.string());
    EXPECT_EQ(client.get(path).failure, 60) << "the certificate must be refused";
}

TEST_F(SandboxFixture, AnsweredForAnExpiredCertificateWithANewOne) {
    service.stop();
    fs::remove_all(folder.path() / "tls");
    prepareAuthority(folder.path() / "tls", "127.0.0.1", kNow - hours(24 * 4000));
    SandboxService again(optionsFor(folder.path()));
    again.start();
    Client trusting(again);
    EXPECT_EQ(trusting.get("/sandbox/requests").status, 200);
    EXPECT_EQ(again.credentials().password, user().password) << "credentials are kept";
}

} // namespace norvane::sandbox
