#include <norvane/platform/TextCompare.h>

#include <gtest/gtest.h>

namespace norvane {
namespace {

TEST(TextCompare, FoldsCaseInFull) {
    EXPECT_TRUE(foldedEqual("STRASSE", "straße"));
    EXPECT_TRUE(foldedEqual("ΟΔΟΣ", "οδος"));
    EXPECT_TRUE(foldedEqual("JOSE\u0301", "josé")) << "composed or not";
    EXPECT_FALSE(foldedEqual("JOSÉ", "jose"));
    EXPECT_FALSE(foldedEqual("a", "a "));
}

TEST(TextCompare, IgnoresDiacriticsButNoLetters) {
    EXPECT_TRUE(foldedEqual("JOSÉ", "jose", Diacritics::Ignore));
    EXPECT_TRUE(foldedEqual("\u1e9b\u0323", "S", Diacritics::Ignore)) << "a long s with dots";
    EXPECT_TRUE(foldedEqual("İ", "i", Diacritics::Ignore));
    EXPECT_TRUE(foldedEqual("か", "が", Diacritics::Ignore)) << "a voicing mark is a mark";
    EXPECT_TRUE(foldedEqual("=", "≠", Diacritics::Ignore));
    EXPECT_FALSE(foldedEqual("2", "²", Diacritics::Ignore)) << "compatible, but another character";
    EXPECT_FALSE(foldedEqual("TM", "™", Diacritics::Ignore));
    EXPECT_FALSE(foldedEqual("दु", "दि", Diacritics::Ignore));
    EXPECT_FALSE(foldedEqual("Jose", "Josef", Diacritics::Ignore));
}

TEST(TextCompare, AnAbsentTextEqualsNothing) {
    const std::optional<std::string> absent;
    EXPECT_FALSE(nvm_caseAndDiacriticInsensitivelyMatches(absent, absent));
    EXPECT_FALSE(nvm_caseAndDiacriticInsensitivelyMatches(absent, ""));
    EXPECT_TRUE(nvm_caseAndDiacriticInsensitivelyMatches("Á", "a"));
}

TEST(TextCompare, TrimsUnicodeWhiteSpace) {
    EXPECT_EQ(trimmed("\u00a0\t \u2029x\u200b y\u0085\r\n\u3000"), "x\u200b y");
    EXPECT_EQ(trimmed("\xff \xff"), "\xff \xff");
    EXPECT_TRUE(isBlank("\u2028\n"));
    EXPECT_TRUE(isBlank(std::nullopt));
    EXPECT_EQ(codePointLength("a\u00e9\U0001f600"), 3u);
}

} // namespace
} // namespace norvane
