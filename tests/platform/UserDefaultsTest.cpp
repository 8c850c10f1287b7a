#include "src/platform/Adapters.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/InMemoryUserDefaults.h"
#include "tests/support/RecordingLog.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>

namespace norvane {
namespace {

struct Setting {
    TemporaryFolder folder;
    std::shared_ptr<RecordingLog> log = std::make_shared<RecordingLog>();
};

using DefaultsMaker = std::shared_ptr<UserDefaults> (*)(Setting&);

std::shared_ptr<UserDefaults> makeInFolder(Setting& setting) {
    return makeFileUserDefaults(setting.folder.path(), setting.log);
}

class UserDefaultsContract : public ::testing::TestWithParam<DefaultsMaker> {
  protected:
    Setting setting_;
    std::shared_ptr<UserDefaults> defaults_ = GetParam()(setting_);
};

TEST_P(UserDefaultsContract, KeepTypedValuesBySuite) {
    const Dictionary values{{"bool", true},
                            {"date", Date(std::chrono::milliseconds(-1))},
                            {"decimal", 3.0},
                            {"fraction", 0.1},
                            {"integer", 9007199254740993},
                            {"list", Array{1, "two", Array{}, Value()}},
                            {"mapped", Dictionary{{"$date", "no date"}}},
                            {"text", "ä\n"}};
    for (const auto& [key, value] : values)
        ASSERT_FALSE(defaults_->setValue("a/../suite", key, value)) << key;
    EXPECT_EQ(defaults_->all("a/../suite"), values);
    EXPECT_TRUE(defaults_->value("a/../suite", "integer").isInteger());
    EXPECT_FALSE(defaults_->value("a/../suite", "decimal").isInteger());
    EXPECT_TRUE(defaults_->value("a/../suite", "bool").isBool());
    EXPECT_TRUE(defaults_->value("a/../suite", "date").asDate());
    EXPECT_TRUE(defaults_->all("suite").empty());
}

TEST_P(UserDefaultsContract, RemoveAKeyThatIsSetToNull) {
    ASSERT_FALSE(defaults_->setValue("suite", "key", 1));
    ASSERT_FALSE(defaults_->setValue("suite", "other", 2));
    EXPECT_FALSE(defaults_->setValue("suite", "key", {}));
    EXPECT_FALSE(defaults_->setValue("suite", "key", {}));
    EXPECT_EQ(defaults_->all("suite"), (Dictionary{{"other", 2}}));
    EXPECT_TRUE(defaults_->value("suite", "key").isNull());
}

TEST_P(UserDefaultsContract, RefuseWhatTheyCouldNotGiveBackAndKeepWhatTheyHave) {
    ASSERT_FALSE(defaults_->setValue("suite", "key", 1));
    EXPECT_TRUE(defaults_->setValue("suite", "key", Data("bytes")));
    EXPECT_TRUE(defaults_->setValue("suite", "key", "\xff"));
    EXPECT_TRUE(defaults_->setValue("suite", "key", std::numeric_limits<double>::infinity()));
    EXPECT_EQ(defaults_->value("suite", "key"), Value(1));
}

INSTANTIATE_TEST_SUITE_P(File, UserDefaultsContract, ::testing::Values(makeInFolder));
INSTANTIATE_TEST_SUITE_P(InMemory, UserDefaultsContract,
                         ::testing::Values([](Setting&) -> std::shared_ptr<UserDefaults> {
                             return std::make_shared<InMemoryUserDefaults>();
                         }));

TEST(FileUserDefaults, PutADamagedSuiteAsideAndSaySo) {
    Setting setting;
    const auto defaults = makeInFolder(setting);
    const std::string remains = "{\"key\": 1";
    for (const bool reads : {true, false}) {
        setting.folder.file("suite.json", remains);
        setting.log->expect("Damaged user defaults were put aside");
        if (reads) {
            EXPECT_TRUE(defaults->all("suite").empty());
        } else {
            EXPECT_FALSE(defaults->setValue("suite", "new", 2));
            EXPECT_EQ(defaults->value("suite", "new"), Value(2));
        }
        bool isKept = false;
        for (const auto& entry : std::filesystem::directory_iterator(setting.folder.path())) {
            if (entry.path().string().find(".damaged-") == std::string::npos) continue;
            std::ifstream file(entry.path());
            isKept = std::string(std::istreambuf_iterator<char>(file), {}) == remains;
            std::filesystem::remove(entry.path());
        }
        EXPECT_TRUE(isKept);
    }
}

constexpr int kWritesEach = 100;

/// Counts a shared key up and writes keys of its own.
int writeDefaults(const std::vector<std::string>& arguments) {
    const auto defaults = makeFileUserDefaults(arguments.at(0), std::make_shared<RecordingLog>());
    for (int i = 0; i < kWritesEach; ++i) {
        if (defaults->setValue("suite", arguments.at(1) + std::to_string(i), i)) return 1;
        if (defaults->value("suite", arguments.at(1) + std::to_string(i)) != Value(i)) return 2;
    }
    return 0;
}
const TestRole kWriter("write-defaults", writeDefaults);

TEST(FileUserDefaults, LoseNothingThatSeveralProcessesAndThreadsWrite) {
    Setting setting;
    const auto defaults = makeInFolder(setting);
    EXPECT_TRUE(defaults->all("suite").empty());
    const std::string folder = setting.folder.path();
    auto first = ChildProcess::inRole("write-defaults", {folder, "a"});
    auto second = ChildProcess::inRole("write-defaults", {folder, "b"});
    std::vector<std::thread> threads;
    for (const auto* prefix : {"c", "d"}) {
        threads.emplace_back([&, prefix] {
            for (int i = 0; i < kWritesEach; ++i) {
                EXPECT_FALSE(defaults->setValue("suite", prefix + std::to_string(i), i));
            }
        });
    }
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(first.wait(), 0);
    EXPECT_EQ(second.wait(), 0);
    EXPECT_EQ(defaults->all("suite").size(), 4u * kWritesEach);
}

} // namespace
} // namespace norvane
