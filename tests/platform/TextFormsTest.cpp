#include <norvane/platform/Base64.h>
#include <norvane/platform/DateFormat.h>
#include <norvane/platform/NVMError.h>

#include <gtest/gtest.h>

namespace norvane {
namespace {

std::string reread(std::string_view text) {
    const auto date = parseIso8601(text);
    return date ? formatIso8601(*date) : "refused";
}

TEST(WireDates, AreReadWithAnyFractionAndOffsetAndWrittenInUtc) {
    EXPECT_EQ(reread("2024-02-29T23:59:59.1239999Z"), "2024-02-29T23:59:59.123Z");
    EXPECT_EQ(reread("2024-02-29T23:59:59Z"), "2024-02-29T23:59:59.000Z");
    EXPECT_EQ(reread("2024-02-29T23:59:59.5Z"), "2024-02-29T23:59:59.500Z");
    EXPECT_EQ(reread("2024-12-31T23:30:00-01:00"), "2025-01-01T00:30:00.000Z");
    EXPECT_EQ(reread("2024-01-01T00:10:00.123456789+0530"), "2023-12-31T18:40:00.123Z");
    EXPECT_EQ(reread("1969-12-31T23:59:59.999Z"), "1969-12-31T23:59:59.999Z");
}

TEST(WireDates, RefuseTextsThatNameNoInstant) {
    for (const auto* text :
         {"", "2024-02-29", "2024-02-29T23:59:59", "2023-02-29T00:00:00Z", "2024-13-01T00:00:00Z",
          "2024-02-29T24:00:00Z", "2024-02-29T00:00:00.1234567890Z", "2024-02-29T00:00:00Zx",
          "2024-02-29T00:00:00+1", "2024-02-29T00:00:00+01:", "+024-02-29T00:00:00Z"}) {
        EXPECT_EQ(reread(text), "refused") << text;
    }
}

TEST(LocalDates, ReadBackWhatTheyWroteByTheMinute) {
    const Date date = *parseIso8601("2024-02-29T12:34:00Z");
    EXPECT_EQ(parseMediumDateShortTime(mediumDateShortTime(date)), date);
    EXPECT_NE(shortDateShortTime(date), mediumDateShortTime(date));
    EXPECT_FALSE(parseMediumDateShortTime(mediumDateShortTime(date) + " and more").has_value());
    EXPECT_FALSE(parseMediumDateShortTime("").has_value());
}

TEST(Base64, PadsAndBreaksLines) {
    EXPECT_EQ(encodeBase64(""), "");
    EXPECT_EQ(encodeBase64("f"), "Zg==");
    EXPECT_EQ(encodeBase64("fo"), "Zm8=");
    EXPECT_EQ(encodeBase64("foo"), "Zm9v");
    const std::string sixtyFour = encodeBase64(std::string(48, 'a'), Base64Lines::SixtyFour);
    EXPECT_EQ(sixtyFour.find("\r\n"), std::string::npos);
    EXPECT_EQ(encodeBase64(std::string(49, 'a'), Base64Lines::SixtyFour), sixtyFour + "\r\nYQ==");
}

TEST(Base64, DecodesAroundForeignCharacters) {
    std::string bytes;
    for (int i = 0; i < 256; ++i)
        bytes += static_cast<char>(i);
    EXPECT_EQ(decodeBase64(encodeBase64(bytes, Base64Lines::SixtyFour)).view(), bytes);
    EXPECT_EQ(decodeBase64(" Zm\r\n9*v-").view(), "foo");
    EXPECT_EQ(decodeBase64("Zg==Zg==").view(), "f");
    EXPECT_EQ(decodeBase64("Zm9vA").view(), "foo");
}

TEST(NVMError, DescribesItselfWithoutADescription) {
    EXPECT_EQ(NVMError("user.setup", 3, {}).localizedDescription(),
              "The operation couldn't be completed. (user.setup error 3.)");
    const auto error = NVMError::make("a", 0, "Broken.", "BROKEN");
    EXPECT_EQ(error.localizedDescription(), "Broken.");
    EXPECT_EQ(error.failureReason(), "BROKEN");
    EXPECT_EQ(error, NVMError::make("a", 0, "Broken.", "BROKEN"));
}

} // namespace
} // namespace norvane
