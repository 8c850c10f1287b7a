#include <norvane/api/NVESEnvelopes.h>
#include <norvane/api/NVESResponseDeserializer.h>
#include <norvane/platform/DateFormat.h>

#include <gtest/gtest.h>

namespace norvane {
namespace {

NVESResult read(std::string_view json, std::string_view type) {
    const auto result = NVESResponseDeserializer().deserialize(json, type);
    EXPECT_TRUE(result.ok()) << result.error().localizedDescription();
    return result ? *result : NVESResult();
}

std::int64_t codeOf(const Result<NVESResult>& result) { return result ? 0 : result.error().code; }

TEST(ResponseDeserializer, ReadsRecordsAloneInListsAndInDictionaries) {
    constexpr std::string_view kEnvelope = R"({"envelopeId":"e1"})";
    EXPECT_EQ(read(kEnvelope, "NVESEnvelope*").record<NVESEnvelope>()->envelopeId, "e1");
    EXPECT_EQ(read(kEnvelope, "NVESEnvelope").record<NVESEnvelopeSummary>(), nullptr) << "another type";
    for (const char* type :
         {"NSArray<NVESEnvelope>", "NSArray<NVESEnvelope*>*", "NSArray* /* NVESEnvelope */"}) {
        const NVESResult list = read("[{},null," + std::string(kEnvelope) + "]", type);
        ASSERT_EQ(list.elements()->size(), 3u) << type;
        EXPECT_TRUE(list.elements()->at(1).isNothing()) << type;
        EXPECT_EQ(list.elements()->at(2).record<NVESEnvelope>()->envelopeId, "e1") << type;
    }
    for (const char* type :
         {"NSDictionary<NSString, NVESEnvelope>", "NSDictionary* /* NSString, NVESEnvelope */"})
        EXPECT_EQ(
            read(R"({"k":{"envelopeId":7.0}})", type).members()->at("k").record<NVESEnvelope>()->envelopeId,
            "7.0");
    const NVESResult nested = read("[[],[1,2.5]]", "NSArray<NSArray<NSNumber>>");
    EXPECT_EQ(nested.elements()->at(1).elements()->at(1).value(), Value(2.5));
}

TEST(ResponseDeserializer, ReadsPrimitives) {
    EXPECT_EQ(read(R"("text")", "NSString").value(), Value("text"));
    EXPECT_EQ(read(R"("1e2")", "NSNumber").value(), Value(100));
    EXPECT_EQ(read("true", "NSNumber").value(), Value(true));
    EXPECT_EQ(read(R"("false")", "NSNumber*").value(), Value(0));
    EXPECT_EQ(read(R"("2024-02-29T23:59:59Z")", "NSDate").value(),
              Value(*parseIso8601("2024-02-29T23:59:59Z")));
    EXPECT_EQ(read(R"({"a":[1]})", "id").value()["a"], Value(Array{1}));
    EXPECT_TRUE(read("null", "NVESEnvelope").isNothing());
    EXPECT_TRUE(read("{}", "").isNothing());
    const NVESResponseDeserializer deserializer;
    for (const auto& [json, type] : {std::pair{"1", "NSString"},
                                     {"{}", "NSNumber"},
                                     {R"("x")", "NSNumber"},
                                     {R"("2024-02-30T00:00:00Z")", "NSDate"},
                                     {"{}", "NSArray<id>"},
                                     {"[]", "NSDictionary<NSString, id>"},
                                     {"[]", "NVESEnvelope"}})
        EXPECT_EQ(codeOf(deserializer.deserialize(json, type)), 143553) << json << " as " << type;
}

TEST(ResponseDeserializer, TakesTextForJsonOnlyWhereNoRecordIsDue) {
    EXPECT_EQ(read("<html>", "NSString").value(), Value("<html>"));
    EXPECT_EQ(read("", "id").value(), Value(""));
    EXPECT_EQ(read("\xff\xfe", "id").value(), Value(Data("\xff\xfe", 2)));
    EXPECT_EQ(codeOf(NVESResponseDeserializer().deserialize("", "NVESEnvelope")), 143553);
    const auto error = NVESResponseDeserializer().deserialize("<html>", "NVESEnvelope");
    EXPECT_EQ(error.error().localizedDescription(),
              "Received response [<html>] is not an object of type NVESEnvelope");
    const auto bytes = NVESResponseDeserializer().deserializeBytes(Data(std::string("{}")), "NSData");
    EXPECT_EQ(bytes->value(), Value(Data(std::string("{}"))));
}

TEST(ResponseDeserializer, NamesUnknownTypesAndForbiddenNulls) {
    NVESResponseDeserializer deserializer;
    const auto unknown = deserializer.deserialize("[1]", "NSArray<NVESNothing>");
    EXPECT_EQ(codeOf(unknown), 143528);
    EXPECT_EQ(unknown.error().localizedDescription(),
              "Unknown response expected type NVESNothing [response: 1]");
    deserializer.treatNullAsError = true;
    EXPECT_EQ(codeOf(deserializer.deserialize("[{},null]", "NSArray<NVESEnvelope>")), 143509);
    EXPECT_EQ(codeOf(deserializer.deserialize(R"({"k":null})", "NSDictionary<NSString, id>")), 143509);
    for (const char* odd : {"NSArray<>", "NSArray<", "NSDictionary<a>", "**", "NSArray<NSArray<>>"})
        EXPECT_EQ(codeOf(deserializer.deserialize("[[]]", odd)), 143528) << odd;
}

} // namespace
} // namespace norvane
