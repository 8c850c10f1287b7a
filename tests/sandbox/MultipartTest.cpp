#include "sandbox/Multipart.h"

#include <gtest/gtest.h>

namespace norvane::sandbox {

namespace {

const std::string kWhole = "--b\r\nContent-Disposition: form-data; name=\"(null)\"\r\n\r\n{}\r\n"
                           "--b\r\nA: 1\r\nB: 2\r\n\r\nx\r\n--c\r\n\r\n--b--\r\n";

} // namespace

TEST(Multipart, GivesEveryPartByteForByte) {
    const auto result = parseMultipart("b", kWhole);
    ASSERT_TRUE(result.ok()) << result.error;
    ASSERT_EQ(result.parts.size(), 2U);
    EXPECT_EQ(*result.parts[0].header("content-disposition"), "form-data; name=\"(null)\"");
    EXPECT_EQ(result.parts[0].body, "{}");
    EXPECT_EQ(result.parts[1].head, "A: 1\r\nB: 2\r\n");
    EXPECT_EQ(result.parts[1].body, "x\r\n--c\r\n")
        << "what looks like a boundary but is none belongs to the part";
}

TEST(Multipart, KeepsEmptyAndBinaryBodies) {
    const std::string binary("\0\r\n\xff--", 6);
    const std::string text = "--b\r\nA: 1\r\n\r\n\r\n--b\r\nA: 1\r\n\r\n" + binary + "\r\n--b--";
    const auto result = parseMultipart("b", text);
    ASSERT_TRUE(result.ok()) << result.error;
    EXPECT_EQ(result.parts[0].body, "");
    EXPECT_EQ(result.parts[1].body, binary);
}

TEST(Multipart, RefusesMalformedBodiesAndSaysWhy) {
    const struct {
        std::string body;
        std::string why;
    } cases[] = {
        {"", "does not begin with the boundary"},
        {"preamble\r\n" + kWhole, "does not begin with the boundary"},
        {"--b--\r\n", "there is no part"},
        {"--b\nA: 1\n\nx\n--b--", "not followed by CR LF"},
        {"--bx\r\nA: 1\r\n\r\nx\r\n--b--", "not followed by CR LF"},
        {"--b\r\n\r\nbody\r\n--b\r\nA: 1\r\n\r\nx\r\n--b--", "a part has no headers"},
        {"--b\r\nA: 1", "headers of a part do not end"},
        {"--b\r\nA: 1\r\n\r\nx", "no boundary after it"},
        {"--b\r\nA: 1\r\n\r\nx\n--b--", "no boundary after it"},
        {"--b\r\nno colon\r\n\r\nx\r\n--b--", "header line of a part is malformed"},
        {"--b\r\nA b: 1\r\n\r\nx\r\n--b--", "header line of a part is malformed"},
        {"--b\r\nA: 1\r\n\r\nx\r\n--b--junk", "something follows the last boundary"},
        {"--b\r\nA: 1\r\n\r\nx\r\n--b-- \r\n", "something follows the last boundary"},
    };
    for (const auto& bad : cases) {
        const auto result = parseMultipart("b", bad.body);
        EXPECT_NE(result.error.find(bad.why), std::string::npos) << bad.body << " gave: " << result.error;
    }
    EXPECT_FALSE(parseMultipart("", kWhole).ok());
}

TEST(Multipart, EveryBodyCutShortIsRefused) {
    for (std::size_t length = 0; length < kWhole.size() - 2; ++length)
        EXPECT_FALSE(parseMultipart("b", kWhole.substr(0, length)).ok()) << length;
}

TEST(HeaderValue, ReadsParametersInTheirOrder) {
    const auto value =
        parseHeaderValue(R"(form-data; name="documentId-1"; filename="a \"b\".pdf"; documentId="1")", true);
    ASSERT_TRUE(value.error.empty()) << value.error;
    EXPECT_EQ(value.value, "form-data");
    const std::vector<HeaderParameter> expected{
        {"name", "documentId-1"}, {"filename", "a \"b\".pdf"}, {"documentId", "1"}};
    EXPECT_EQ(value.parameters, expected);
}

TEST(HeaderValue, InsistsOnQuotesAndSeparatorsWhenTold) {
    for (const char* text : {"form-data; name=x", "form-data;name=\"x\"", "form-data;  name=\"x\"",
                             "form-data; =\"x\"", "form-data; name=\"x", "form-data; name=\"x\" "})
        EXPECT_FALSE(parseHeaderValue(text, true).error.empty()) << text;
}

TEST(HeaderValue, FindsTheBoundaryHoweverItIsWritten) {
    EXPECT_EQ(multipartBoundary("multipart/form-data; boundary=abc"), "abc");
    EXPECT_EQ(multipartBoundary("Multipart/Form-Data;charset=utf-8;boundary=\"a b\""), "a b");
    EXPECT_EQ(multipartBoundary("multipart/form-data"), "");
    EXPECT_EQ(multipartBoundary("multipart/mixed; boundary=abc"), "");
    EXPECT_EQ(multipartBoundary("multipart/form-data; boundary=" + std::string(71, 'x')), "");
}

} // namespace norvane::sandbox
