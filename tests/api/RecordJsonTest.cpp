#include <norvane/api/NVESAccounts.h>
#include <norvane/api/NVESEnvelopes.h>
#include <norvane/api/NVESErrors.h>
#include <norvane/api/NVESPassedThrough.h>
#include <norvane/api/NVESTemplates.h>
#include <norvane/api/RecordJson.h>
#include <norvane/platform/Json.h>

#include <gtest/gtest.h>

#include <random>

namespace norvane {
namespace {

template <class T>
std::string rewritten(std::string_view json) {
    const auto record = readRecord<T>(json);
    return record ? writeRecord(**record) : record.error().localizedDescription();
}

template <class T>
NVMError errorOf(std::string_view json) {
    const auto record = readRecord<T>(json);
    return record ? NVMError() : record.error();
}

TEST(RecordJson, ReadsWhateverSubsetOfKeysComesInWhateverOrder) {
    EXPECT_EQ(rewritten<NVESEnvelopeSummary>(R"({"status":"sent","envelopeId":"e1"})"),
              R"({"envelopeId":"e1","status":"sent"})");
    EXPECT_EQ(rewritten<NVESEnvelopeSummary>(R"({"uri":null,"surprise":[{"a":[]},1],"status":"sent"})"),
              R"({"status":"sent"})");
    EXPECT_EQ(rewritten<NVESEnvelopeSummary>("{}"), "{}");
    EXPECT_EQ(rewritten<NVESEnvelopeSummary>("\xEF\xBB\xBF {\"uri\":\"a\",\"uri\":1,\"uri\":null}"),
              R"({"uri":"1"})")
        << "a byte order mark, and a key named thrice";
}

TEST(RecordJson, KeepsTheSpellingOfNumbersAndBooleansThatBecomeText) {
    EXPECT_EQ(
        rewritten<NVESEnvelopeSummary>(
            R"({"skipped":{"x":[1.5,{}],"y":"1.50"},"envelopeId":1.50,"uri":-0,"statusDateTime":true,"status" : 1E2 })"),
        R"({"envelopeId":"1.50","uri":"-0","statusDateTime":"true","status":"1E2"})");
    EXPECT_EQ(rewritten<NVESListCustomField>(R"({"listItems":["a",2.0,null,false],"name":"n\"1,"})"),
              R"({"listItems":["a","2.0","false"],"name":"n\"1,"})");
    EXPECT_EQ(rewritten<NVESEnvelopeSummary>(
                  R"({"uri":"12345678901234567890123","envelopeId":12345678901234567890123})"),
              R"({"envelopeId":"12345678901234567890123","uri":"12345678901234567890123"})")
        << "beyond 64 bits";
    EXPECT_EQ(rewritten<NVESEnvelopeSummary>(R"({"uri":-1E+999,"skipped":[1e999],"status":"1e999"})"),
              R"({"uri":"-1E+999","status":"1e999"})")
        << "beyond all doubles";
}

TEST(RecordJson, ReadsTextWhereANumberIsDue) {
    EXPECT_EQ(rewritten<NVESText>(R"({"width":"42","maxLength":1.5})"), R"({"width":42,"maxLength":1.5})");
    for (const char* odd : {R"("wide")", R"("")", R"("1,5")", "[]", R"("0x10")", "1e999"}) {
        const NVMError error = errorOf<NVESText>(R"({"width":)" + std::string(odd) + "}");
        EXPECT_EQ(error.code, 143553) << odd;
        EXPECT_EQ(error.userInfo.at(std::string(kJsonPathKey)), Value("/width")) << odd;
    }
}

TEST(RecordJson, SaysWhereAMemberDoesNotFit) {
    const NVMError error =
        errorOf<NVESRecipients>(R"({"signers":[{},{"tabs":{"textTabs":[{"name":{"a":1}}]}}]})");
    EXPECT_EQ(error.domain, kDeserializationErrorDomain);
    EXPECT_EQ(error.localizedDescription(),
              R"(Received response [{"a":1}] is not an object of type NSString)");
    EXPECT_EQ(error.userInfo.at(std::string(kJsonPathKey)), Value("/signers/1/tabs/textTabs/0/name"));
    EXPECT_EQ(errorOf<NVESRecipients>(R"({"signers":{}})").code, 143553);
    EXPECT_EQ(errorOf<NVESRecipients>(R"({"signers":[1]})").code, 143553);
    EXPECT_EQ(errorOf<NVESTabs>(R"({"numberTabs":{}})").code, 143553);
}

TEST(RecordJson, QuotesNoSecretInAnError) {
    for (const char* odd : {R"({"apiPassword":["hunter2"]})", R"({"apiPassword":{"a":["hunter2"]}})",
                            R"({"loginAccounts":[{"email":{"accessToken":"hunter2"}}]})",
                            R"({"apiPassword":"hunter2",)", R"([{"apiPassword":"hunter2","name":"Ann"}])"}) {
        const NVMError error = errorOf<NVESLoginInformation>(odd);
        EXPECT_EQ(error.code, 143553) << odd;
        EXPECT_EQ(error.localizedDescription().find("hunter2"), std::string::npos) << odd;
    }
    EXPECT_EQ(errorOf<NVESLoginInformation>(R"([{"apiPassword":"hunter2"}])").localizedDescription(),
              R"(Received response [[{"apiPassword":"-redacted-"}]] is not an object of type )"
              "NVESLoginInformation");
}

TEST(RecordJson, RefusesWhatIsNoJsonOfThatSizeAndDepth) {
    const std::string deep =
        R"({"x":)" + std::string(kJsonMaximumDepth, '[') + std::string(kJsonMaximumDepth, ']') + "}";
    for (const std::string& text : {std::string(), std::string("<html>"), std::string(R"({"uri":"a")"), deep,
                                    std::string("{\"uri\":\"\xff\"}"), std::string(R"({"uri":1e999e})")})
        EXPECT_EQ(errorOf<NVESEnvelopeSummary>(text).code, 143553) << text;

    std::string many = R"({"textTabs":[{})";
    for (int number = 0; number < 1'000'000; ++number)
        many += ",{}";
    EXPECT_EQ(errorOf<NVESTabs>(many + "]}").code, 143553) << "3 MB that would take 2 GB";
}

TEST(RecordJson, ReadsLongListsWithNullsAmongThem) {
    std::string json = R"({"textTabs":[null)";
    for (int number = 0; number < 200; ++number) {
        json += R"(,{"tabId":")" + std::to_string(number) + "\"}";
        if (number % 7 == 0) json += ",null";
    }
    auto tabs = readRecord<NVESTabs>(json + "]}");
    ASSERT_TRUE(tabs && (*tabs)->textTabs);
    ASSERT_EQ((*tabs)->textTabs->size(), 200u);
    for (std::size_t number = 0; number < 200; ++number)
        EXPECT_EQ((*(*tabs)->textTabs)[number]->tabId, std::to_string(number));

    const std::shared_ptr<NVESText> survivor = (*tabs)->textTabs->at(99);
    tabs->reset();
    EXPECT_EQ(survivor->tabId, "99") << "once the list has gone";
}

TEST(RecordJson, TravelsUnderTheReservedWordsNeverUnderThePropertyNames) {
    NVESEnvelopeTemplateDefinition definition;
    definition._description = "d";
    definition.varNewPassword = "p";
    const std::string json = writeRecord(definition);
    EXPECT_EQ(json, R"({"newPassword":"p","description":"d"})");
    EXPECT_EQ(rewritten<NVESEnvelopeTemplateDefinition>(json), json);
    EXPECT_EQ(rewritten<NVESEnvelopeTemplateDefinition>(R"({"_description":"d","varNewPassword":"p"})"),
              "{}");
}

TEST(RecordJson, NeverReadsOrWritesWhatIsOfThisDeviceOnly) {
    NVESDocument document;
    document.fileSandboxURL.text = "file:///a";
    EXPECT_EQ(writeRecord(document), "{}");
    EXPECT_FALSE(
        (*readRecord<NVESDocument>(R"({"fileSandboxURL":"file:///etc/passwd"})"))->fileSandboxURL.text);
}

TEST(RecordJson, KeepsTheMembersThatARecordOnlyPassesThrough) {
    const std::string json =
        R"({"zeta":[1.50,"\u00e4",null],"accountName":"A","alpha":{"b":true},"nothing":null})";
    EXPECT_EQ(rewritten<NVESAccountInformation>(json),
              R"({"accountName":"A","zeta":[1.50,"\u00e4",null],"alpha":{"b":true},"nothing":null})");
    const std::string odd = R"({"k":{"k":1,"k":[]},"long":12345678901234567890123,"s":"1e+000000 \\"})";
    EXPECT_EQ(rewritten<NVESFolderItem>("{ " + odd.substr(1, odd.size() - 2) + " \n}"), odd);
}

TEST(RecordJson, ReadsEscapesAndSurrogatePairs) {
    EXPECT_EQ(rewritten<NVESEnvelopeSummary>(R"({"\u0075ri":"\ud83d\ude00\/\u0000\t","sta\u0074us":"x"})"),
              "{\"uri\":\"\xf0\x9f\x98\x80/\\u0000\\u0009\",\"status\":\"x\"}");
}

TEST(RecordJson, KnowsEachRecordByItsName) {
    for (const RecordType* type : wireRecordTypes()) {
        EXPECT_EQ(wireRecordType(type->name()), type);
        EXPECT_EQ(writeRecord(*type, type->make().get()), "{}") << type->name();
        for (const Field& field : type->fields()) {
            const std::string key(field.name);
            EXPECT_EQ(type->find(key), &field) << key;
            for (const std::string& other : {key + "s", key.substr(1), key.substr(0, key.size() / 2) + "?"})
                EXPECT_TRUE(!type->find(other) || type->find(other)->name == other) << other;
        }
    }
}

TEST(RecordJson, WritesTextThatNeedsEscapesOrIsNoUtf8) {
    NVESNameValue record;
    record.name =
        "tab\tnew\nquote\"back\\nul" + std::string(1, '\0') + "long enough for whole words \xc3\xbc";
    record.value = "bad \xff byte";
    EXPECT_EQ(writeRecord(record),
              "{\"name\":\"tab\\u0009new\\nquote\\\"back\\\\nul\\u0000long enough for whole words \xc3\xbc\","
              "\"value\":\"bad \xef\xbf\xbd byte\"}");
}

/// Fills records of any type with anything that may travel.
class RandomRecords {
  public:
    explicit RandomRecords(unsigned seed)
        : random_(seed) {}

    void fill(const RecordType& type, void* record, int depth = 0) {
        for (const Field& field : type.fields()) {
            if (random_() % 3 == 0) continue;
            switch (field.kind) {
            case FieldKind::Text:
                field.as<field::Text>(record) = text();
                break;
            case FieldKind::Number:
                field.as<field::Number>(record) = number();
                break;
            case FieldKind::TextList:
                field.as<field::TextList>(record) = std::vector{text(), text()};
                break;
            case FieldKind::Any:
                field.as<field::Any>(record) = Value(Array{text(), Dictionary{{text(), 1}}});
                break;
            case FieldKind::Rest:
                field.as<field::Rest>(record).members.emplace_back("!" + text(), writeJson(text()));
                break;
            case FieldKind::Record:
                if (depth < 6)
                    fill(field.reference->type(), field.reference->emplace(field.in(record)), depth + 1);
                break;
            case FieldKind::List:
                field.reference->reset(field.in(record), 2);
                for (std::size_t count = depth < 6 ? random_() % 3 : 0; count > 0; --count)
                    fill(field.reference->type(), field.reference->emplace(field.in(record)), depth + 1);
                break;
            default:
                break;
            }
        }
    }

  private:
    std::string text() {
        static constexpr std::string_view kPieces[] = {"a",    "\"",           "\\",     "\n",
                                                       "\x01", "\xe2\x82\xac", "{}[]:,", "word "};
        std::string result;
        for (auto count = random_() % 12; count > 0; --count)
            result += kPieces[random_() % std::size(kPieces)];
        return result;
    }
    double number() {
        const double value = static_cast<double>(random_()) - 2e9;
        return random_() % 2 ? value : value / 7919;
    }

    std::mt19937 random_;
};

TEST(RecordJson, GivesBackEveryRecordThatItWrote) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        for (const char* name :
             {"NVESEnvelopeTemplate", "NVESEnvelopeDefinition", "NVESLoginInformation",
              "NVESEnvelopesInformation", "NVESAccountInformation", "NVESEnvelopeTemplateResults"}) {
            const RecordType& type = *wireRecordType(name);
            const auto record = type.make();
            RandomRecords(seed).fill(type, record.get());
            const std::string json = writeRecord(type, record.get());
            const auto again = readRecord(type, json);
            ASSERT_TRUE(again.ok()) << name << " " << seed << " " << again.error().localizedDescription();
            ASSERT_TRUE(equalRecords(type, record.get(), again->get())) << name << " " << seed << " " << json;
        }
    }
}

} // namespace
} // namespace norvane
