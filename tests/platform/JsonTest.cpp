#include <norvane/platform/Json.h>

#include <gtest/gtest.h>

#include <limits>

namespace norvane {
namespace {

JsonError refusal(std::string_view text) {
    const auto result = parseJson(text);
    EXPECT_FALSE(result.ok()) << text;
    return result ? JsonError{} : static_cast<JsonError>(result.error().code);
}

TEST(Json, ReadsEveryKindOfValueAndKeepsIntegersApartFromDecimals) {
    const auto result =
        parseJson(R"({"t":"\u00e4\n","i":-9223372036854775808,"d":1.0,"b":true,"n":null,"a":[1,[]]})");
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(*(*result)["t"].asString(), "ä\n");
    EXPECT_TRUE((*result)["i"].isInteger());
    EXPECT_EQ((*result)["i"].asInteger(), std::numeric_limits<std::int64_t>::min());
    EXPECT_FALSE((*result)["d"].isInteger());
    EXPECT_TRUE((*result)["b"].isBool());
    EXPECT_TRUE((*result)["n"].isNull());
    EXPECT_EQ(result->asDictionary()->count("n"), 1u);
    EXPECT_EQ((*result)["a"], Value(Array{1, Array{}}));
}

TEST(Json, TurnsIntegersBeyond64BitsIntoDoubles) {
    const auto result =
        parseJson(R"({"10000000000000000000000\"":[18446744073709551616,-10000000000000000000000,
        18446744073709551615,"x\\",10000000000000000000]})");
    ASSERT_TRUE(result.ok());
    const Value& list = (*result)["10000000000000000000000\""];
    EXPECT_EQ(list, Value(Array{18446744073709551616.0, -1e22, 18446744073709551615.0, "x\\", 1e19}));
}

TEST(Json, RefusesWhatItCannotKeepAndSaysWhy) {
    EXPECT_EQ(refusal("{\"a\":1,}"), JsonError::Malformed);
    EXPECT_EQ(refusal(""), JsonError::Malformed);
    EXPECT_EQ(refusal("{} {}"), JsonError::Malformed);
    EXPECT_EQ(refusal("\"\xff\""), JsonError::Malformed);
    EXPECT_EQ(refusal("[1e999]"), JsonError::BadNumber);
    EXPECT_EQ(refusal("[10000000000000000000000 12]"), JsonError::Malformed);
    EXPECT_EQ(refusal(std::string(65, '[') + std::string(65, ']')), JsonError::TooDeep);
    EXPECT_TRUE(parseJson(std::string(64, '[') + std::string(64, ']')).ok());
    EXPECT_EQ(refusal(std::string(kJsonMaximumSize + 1, ' ')), JsonError::TooLarge);
}

TEST(Json, NamesThePlaceOfADuplicateKey) {
    const auto result = parseJson(R"({"signers":[{"name":"a"},{"name":"b","name":"c"}]})");
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error().code, static_cast<std::int64_t>(JsonError::DuplicateKey));
    EXPECT_EQ(result.error().userInfo.at(std::string(kJsonPathKey)), Value("/signers/1/name"));
}

TEST(Json, WritesWhatItReadsBack) {
    const std::string text = R"({"a":[1,-2.5,100000,true,null,"q\"\\\n\u0001/ä"],"b":{"c":{}}})";
    EXPECT_EQ(writeJson(*parseJson(text)), text);
    EXPECT_EQ(writeJson(Dictionary{{"a", Array{1, 2}}, {"b", Dictionary{}}}, true),
              "{\n  \"a\": [\n    1,\n    2\n  ],\n  \"b\": {}\n}");
}

TEST(Json, WritesDataAndDatesAsTextAndTheUnsayableAsNull) {
    const Array values{Data(std::string("\0\xff", 2)), Date(std::chrono::milliseconds(1)),
                       std::numeric_limits<double>::infinity(), Value::object(std::make_shared<int>(1)),
                       "\xc3("};
    EXPECT_EQ(writeJson(values), R"(["AP8=","1970-01-01T00:00:00.001Z",null,null,"�("])");
}

TEST(Value, ReadsBoxedTextAsTheWordsAndDigitsThatItStartsWith) {
    EXPECT_TRUE(Value(" yes").boolValue());
    EXPECT_TRUE(Value("7").boolValue());
    EXPECT_FALSE(Value("0").boolValue());
    EXPECT_FALSE(Value("no").boolValue());
    EXPECT_EQ(Value("  -12abc").integerValue(), -12);
    EXPECT_EQ(Value("+5").integerValue(), 5);
    EXPECT_EQ(Value("99999999999999999999").integerValue(), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(Value(1e300).integerValue(), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(Value(-2.9).integerValue(), -2);
    EXPECT_EQ(Value(100000.0).stringValue(), "100000");
    EXPECT_EQ(Value(0.1).stringValue(), "0.1");
    EXPECT_EQ(Value(true).stringValue(), "1");
    EXPECT_FALSE(Value(Array{}).stringValue().has_value());
}

TEST(Value, ComparesNumbersByValueAndContainersByContent) {
    EXPECT_EQ(Value(1), Value(1.0));
    EXPECT_NE(Value("1"), Value(1));
    EXPECT_NE(Value(std::numeric_limits<std::int64_t>::max()),
              Value(std::numeric_limits<std::int64_t>::max() - 1));
    EXPECT_EQ(Value(Dictionary{{"a", Array{1}}}), Value(Dictionary{{"a", Array{1}}}));
    EXPECT_NE(Value(Array{}), Value(Dictionary{}));
}

} // namespace
} // namespace norvane
