#include "src/platform/Adapters.h"
#include "src/platform/EmbeddedStrings.h"

#include <norvane/platform/Json.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>

namespace norvane {
namespace {

namespace fs = std::filesystem;

const Dictionary& english() {
    static const Dictionary texts = [] {
        for (const auto& table : embeddedStrings())
            if (table.locale == "en") return *parseJson(table.json)->asDictionary();
        return Dictionary();
    }();
    return texts;
}

/// The first words of the keys: "Signing" of "Signing.Clear".
std::set<std::string> families() {
    std::set<std::string> names;
    for (const auto& [key, text] : english())
        if (key.find('.') != std::string::npos) names.insert(key.substr(0, key.find('.')));
    return names;
}

/// Literals that are handed to a look-up, and those that look like a key of a known family.
std::set<std::string> keysIn(const std::string& source) {
    static const std::regex asked(R"re((?:strings->(?:text|format)|localized)\(\s*"([^"]+)")re");
    static const std::regex keyShaped(R"re("([A-Z]\w*)((?:\.\w+)+)")re");
    static const std::set<std::string> known = families();
    std::set<std::string> keys;
    const std::sregex_iterator end;
    for (std::sregex_iterator found(source.begin(), source.end(), asked); found != end; ++found)
        keys.insert((*found)[1]);
    for (std::sregex_iterator found(source.begin(), source.end(), keyShaped); found != end; ++found)
        if (known.contains((*found)[1])) keys.insert((*found)[1].str() + (*found)[2].str());
    return keys;
}

TEST(StringKeys, EveryKeyThatTheSourcesUseHasATextInEveryLanguage) {
    std::set<std::string> used;
    for (const char* folder : {"src", "include", "apps"}) {
        for (const auto& entry : fs::recursive_directory_iterator(fs::path(NORVANE_SOURCE_FOLDER) / folder)) {
            const auto extension = entry.path().extension();
            if (extension != ".cpp" && extension != ".h") continue;
            std::ifstream file(entry.path());
            const std::string source{std::istreambuf_iterator<char>(file), {}};
            used.merge(keysIn(source));
        }
    }
    ASSERT_GT(used.size(), 40u) << "the sources were not found";
    for (const auto& table : embeddedStrings()) {
        const auto texts = parseJson(table.json);
        for (const std::string& key : used)
            EXPECT_TRUE((*texts)[key].isString()) << table.locale << " lacks " << key;
    }
}

/// The places that are filled in, in ascending order.
std::multiset<std::string> placesIn(const std::string& text) {
    static const std::regex place(R"(\{\d\})");
    return {std::sregex_token_iterator(text.begin(), text.end(), place), std::sregex_token_iterator()};
}

TEST(StringKeys, EveryLanguageFillsInWhatEnglishDoes) {
    for (const auto& table : embeddedStrings()) {
        const Value texts = *parseJson(table.json);
        EXPECT_EQ(texts.asDictionary()->size(), english().size()) << table.locale;
        for (const auto& [key, text] : english())
            EXPECT_EQ(placesIn(texts[key].stringValue().value_or("")), placesIn(*text.asString()))
                << table.locale << " " << key;
    }
}

TEST(StringKeys, SixLanguagesMayReorderWhatIsFilledIn) {
    std::set<std::string> locales;
    for (const auto& table : embeddedStrings())
        locales.emplace(table.locale);
    EXPECT_EQ(locales, (std::set<std::string>{"ar", "de", "en", "es", "fr", "ja"}));
    EXPECT_EQ(makeJsonStringTable("ja_JP")->format("Signing.PleasePassTheSalt", {"tablet", "{0}"}),
              "{0} さんにtabletを渡してください。");
}

} // namespace
} // namespace norvane
