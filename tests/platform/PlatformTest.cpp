#include "src/platform/Adapters.h"
#include "src/platform/EmbeddedStrings.h"
#include "tests/support/Event.h"
#include "tests/support/KitFixture.h"

#include <norvane/platform/Json.h>
#include <norvane/platform/NVMException.h>

#include <gtest/gtest.h>

#include <set>

namespace norvane {
namespace {

using PlatformTest = KitFixture;

TEST_F(PlatformTest, CompletesEveryMemberAndFindsItsThingsAgainAfterARestart) {
    const Platform& first = platform();
    EXPECT_TRUE(first.files && first.userDefaults && first.credentials && first.http && first.reachability);
    EXPECT_TRUE(first.executors && first.notifications && first.clock && first.random && first.strings);
    EXPECT_TRUE(first.location && !first.location->location());
    EXPECT_FALSE(first.deviceName.empty());
    EXPECT_EQ(first.deviceModel, "device");
    EXPECT_EQ(first.log, log_);
    ASSERT_FALSE(first.userDefaults->setValue("suite", "key", 1));
    ASSERT_FALSE(first.credentials->save("service", "account", Data("secret")));
    restart();
    EXPECT_EQ(platform().userDefaults->value("suite", "key"), Value(1));
    EXPECT_EQ(*platform().credentials->fetch("service", "account"), Data("secret"));
}

TEST_F(PlatformTest, NamesTheFolderThatItCannotMake) {
    PlatformOptions options;
    options.home = home_.file("file", "") / "home";
    const auto completed = Platform::complete({}, options);
    ASSERT_FALSE(completed.ok());
    EXPECT_EQ(completed.error().domain, kFileErrorDomain);
    EXPECT_EQ(completed.error().code, ENOTDIR);

    options.home = "/proc/home"; // there, making a folder fails as if the one above it were missing
    EXPECT_FALSE(Platform::complete({}, options).ok());
}

TEST_F(PlatformTest, TakesTheHostsMainQueue) {
    PlatformOptions options;
    options.home = home_.path();
    options.credentialStore = CredentialStoreKind::File;
    options.mainQueue = platform().executors->makeSerialQueue("host");
    const auto completed = Platform::complete({}, options);
    ASSERT_TRUE(completed.ok());
    EXPECT_EQ(completed->executors->mainQueue(), options.mainQueue);
}

/// Which action an alert without a screen runs; "" for none.
std::string unattendedAnswer(bool isSheet, const std::vector<std::pair<std::string, bool>>& actions) {
    const auto executors = makeAsioExecutors(nullptr);
    std::string answer;
    Alert alert{"title", "message", {}, isSheet};
    for (const auto& [title, isDestructive] : actions) {
        alert.actions.push_back({title, [&answer, name = title] { answer += name; }, isDestructive});
    }
    makeUnattendedAlerts(executors->mainQueue(), std::make_shared<RecordingLog>())->present(alert);
    executors->mainQueue()->sync([] {});
    return answer;
}

TEST(UnattendedAlerts, AcknowledgeMessagesAndBackOutOfQuestions) {
    EXPECT_EQ(unattendedAnswer(false, {{"OK", false}}), "OK");
    EXPECT_EQ(unattendedAnswer(false, {{"Try Again", false}, {"Cancel", false}}), "Cancel");
    EXPECT_EQ(unattendedAnswer(true, {{"Cancel", false}, {"Discard", true}}), "Cancel");
    EXPECT_EQ(unattendedAnswer(true, {{"Confirm", false}}), "");
    EXPECT_EQ(unattendedAnswer(true, {{"Discard", true}}), "");
    EXPECT_EQ(unattendedAnswer(false, {{"Delete", true}}), "Delete");
}

TEST(SystemRandom, GivesFreshVersion4Uuids) {
    const auto random = makeSystemRandom();
    std::set<std::string> seen;
    for (int i = 0; i < 100; ++i) {
        const std::string uuid = random->uuidString();
        EXPECT_TRUE(isUuidString(uuid)) << uuid;
        EXPECT_EQ(uuid[14], '4');
        EXPECT_EQ(uuid.find_first_of("abcdef"), std::string::npos);
        seen.insert(uuid);
    }
    EXPECT_EQ(seen.size(), 100u);
    for (const auto* text :
         {"", "F47AC10B-58CC-4372-A567-0E02B2C3D47", "F47AC10B058CC-4372-A567-0E02B2C3D479",
          "G47AC10B-58CC-4372-A567-0E02B2C3D479", "{47AC10B-58CC-4372-A567-0E02B2C3D479"}) {
        EXPECT_FALSE(isUuidString(text)) << text;
    }
    EXPECT_TRUE(isUuidString("f47ac10b-58cc-4372-a567-0e02b2c3d479"));
}

TEST(StringTable, FallsBackToEnglishAndThenToTheKey) {
    const auto german = makeJsonStringTable("de_AT");
    EXPECT_EQ(german->text("Common.Action.Cancel"), "Abbrechen");
    EXPECT_EQ(german->text("No.Such.Key"), "No.Such.Key");
    EXPECT_EQ(makeJsonStringTable("fi")->text("Common.Action.Cancel"), "Cancel");
    EXPECT_EQ(makeJsonStringTable("en_GB")->format("Signing.PleasePassTheSalt", {"tablet", "{0} Ann"}),
              "Please pass the tablet to {0} Ann.");
    EXPECT_EQ(german->format("a {0} {2} {x} {", {"b", "c"}), "a b {2} {x} {");
}

/// The placeholders of a text, in the order of their numbers.
std::set<std::string> placeholdersOf(const std::string& text) {
    std::set<std::string> found;
    for (std::size_t at = text.find('{'); at != std::string::npos; at = text.find('{', at + 1)) {
        found.insert(text.substr(at, text.find('}', at) - at + 1));
    }
    return found;
}

TEST(StringTable, IsTranslatedWholeAndWithTheSamePlaceholders) {
    Dictionary english;
    for (const auto& table : embeddedStrings()) {
        if (table.locale == "en") english = *parseJson(table.json)->asDictionary();
    }
    ASSERT_FALSE(english.empty());
    for (const auto& table : embeddedStrings()) {
        const auto texts = parseJson(table.json);
        ASSERT_TRUE(texts.ok()) << table.locale;
        EXPECT_EQ(texts->asDictionary()->size(), english.size()) << table.locale;
        for (const auto& [key, text] : english) {
            const std::string* translated = (*texts)[key].asString();
            ASSERT_TRUE(translated && !translated->empty()) << table.locale << " " << key;
            EXPECT_EQ(placeholdersOf(*translated), placeholdersOf(*text.asString()))
                << table.locale << " " << key;
        }
    }
}

} // namespace
} // namespace norvane
