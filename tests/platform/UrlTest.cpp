#include <norvane/platform/Url.h>

#include <gtest/gtest.h>

namespace norvane {
namespace {

TEST(Url, TakesAbsoluteAddressesOnly) {
    for (const char* text : {"", "/path", "host/path", "https://", "https://ho st/", "://host"})
        EXPECT_FALSE(Url::parse(text)) << text;
    EXPECT_FALSE(Url::parse("https://host/a\r\nX: y"));
    EXPECT_FALSE(Url::parse(std::string_view("https://host/\0", 14)));
    EXPECT_TRUE(Url::parse("HTTPS://Host:8443/restapi?x=%0A"));
}

TEST(Url, SaysItsParts) {
    const auto url = *Url::parse("HTTPS://Host/a/%2e%2e/../b%20c?d=e#f");
    EXPECT_EQ(url.scheme(), "https");
    EXPECT_EQ(url.host(), "host");
    EXPECT_EQ(url.port(), 443);
    EXPECT_EQ(url.path(), "/a/%2e%2e/../b%20c");
    EXPECT_EQ(Url::parse("https://host:8443")->port(), 8443);
    EXPECT_EQ(Url::parse("https://host:8443")->path(), "/");
    EXPECT_EQ(Url::parse("kit://host/")->port(), 0);
}

TEST(Url, CountsOnlyLiteralLoopbackNamesAsLoopback) {
    for (const char* text :
         {"http://localhost:80/", "http://LOCALHOST", "http://127.1.2.3", "http://[::1]:8080/x"})
        EXPECT_TRUE(Url::parse(text)->isLoopback()) << text;
    for (const char* text : {"http://localhost.example/", "http://127.0.0.1.example", "http://128.0.0.1",
                             "http://[::2]/", "http://user@example/127.0.0.1", "http://localhost@example/"})
        EXPECT_FALSE(Url::parse(text)->isLoopback()) << text;
}

TEST(Url, AppendsBelowItsPathWithoutFoldingOrBreakingOut) {
    const auto base = *Url::parse("https://host/restapi/v2?old#old");
    EXPECT_EQ(base.appending("accounts/a%20b?c=d").absoluteString(),
              "https://host/restapi/v2/accounts/a%20b?c=d");
    EXPECT_EQ(Url::parse("https://host")->appending("a").absoluteString(), "https://host/a");
    EXPECT_EQ(base.appending("../x").path(), "/restapi/v2/../x");
    EXPECT_EQ(base.appending("a b\r\n#c").path(), "/restapi/v2/a%20b%0D%0A%23c");
}

TEST(Url, BringsFilePathsThereAndBack) {
    for (const char* path : {"/tmp/a b/\xC3\xA4 100%.pdf", "/x#y?z"}) {
        const auto url = Url::fromFilePath(path);
        EXPECT_TRUE(url.isFile());
        EXPECT_EQ(url.filePath(), path);
        EXPECT_EQ(Url::parse(url.absoluteString()), url);
    }
    EXPECT_EQ(Url::parse("file:///a%00b")->filePath(), "");
    EXPECT_EQ(Url::parse("https://host/a")->filePath(), "");
    EXPECT_EQ(percentEscaped("a-._~/\xC3\xA4 +"), "a-._~%2F%C3%A4%20%2B");
}

} // namespace
} // namespace norvane
