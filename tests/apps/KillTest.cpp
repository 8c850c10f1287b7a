#include "tests/apps/CommandLine.h"

#include <sqlite3.h>

#include <filesystem>
#include <set>

namespace norvane {

namespace {

namespace fs = std::filesystem;

/// Kills `norvane` at every system call of a clean run that changes what is on disk or on the wire, and
/// counts envelopes after each: nothing lost, nothing doubled, nothing left over.
class KillTest : public CommandLine {
  protected:
    /// A copy of the prepared home, so that each kill meets the same beginning.
    fs::path freshHome() {
        const fs::path home = folder_.path() / "killed";
        fs::remove_all(home);
        fs::copy(home_, home, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
        return home;
    }

    /// The points of a clean run, and of as many more as it takes until nothing new shows: threads race.
    std::set<testing::KillPoint> pointsOf(const std::vector<std::string>& arguments) {
        std::set<testing::KillPoint> points;
        for (int run = 0; run < 2; ++run) {
            service_.forgetEnvelopes();
            const auto traced = testing::KillTracer::run(command(freshHome(), arguments));
            EXPECT_EQ(traced.exitStatus, 0);
            points.insert(traced.points.begin(), traced.points.end());
        }
        return points;
    }

    static std::size_t filesBelow(const fs::path& folder) {
        std::size_t files = 0;
        if (!fs::exists(folder)) return 0;
        for (const auto& entry : fs::recursive_directory_iterator(folder))
            files += entry.is_regular_file() ? 1 : 0;
        return files;
    }

    static std::string pragma(const fs::path& home, const char* statement) {
        sqlite3* database = nullptr;
        std::string answer;
        sqlite3_open_v2((home / "support" / "NorvaneSDK.sqlite").c_str(), &database, SQLITE_OPEN_READWRITE,
                        nullptr);
        sqlite3_exec(
            database, statement,
            [](void* text, int, char** values, char**) {
                *static_cast<std::string*>(text) += values[0] ? values[0] : "null";
                return 0;
            },
            &answer, nullptr);
        sqlite3_close(database);
        return answer;
    }

    void expectSoundAndEmpty(const fs::path& home) {
        EXPECT_EQ(envelopesOnDevice(home), 0u);
        EXPECT_EQ(filesBelow(home / "Documents" / "userId" / "ed"), 0u);
        EXPECT_EQ(pragma(home, "PRAGMA integrity_check"), "ok");
        EXPECT_EQ(pragma(home, "PRAGMA foreign_key_check"), "");
        EXPECT_EQ(pragma(home, "SELECT count(*) FROM NVMCDEnvelopeDefinition"), "0");
    }

    /// How many envelopes the service has made, once it has dealt with all that reached it.
    std::size_t received() {
        EXPECT_TRUE(service_.waitForRequests(service_.requests().size()));
        return service_.receivedEnvelopes().size();
    }
};

TEST_F(KillTest, ASigningKilledAnywhereLeavesAWholeEnvelopeOrNone) {
    signIn();
    cacheLease();
    const auto arguments = signArguments();
    for (const testing::KillPoint& point : pointsOf(arguments)) {
        SCOPED_TRACE(point.description());
        const fs::path home = freshHome();
        service_.forgetEnvelopes();
        testing::KillTracer::run(command(home, arguments), point);
        const std::size_t kept = envelopesOnDevice(home);
        EXPECT_LE(kept, 1u);
        const Run synced = runIn(home, {"--json", "sync"});
        EXPECT_EQ(synced.status, 0) << synced.output << synced.errors;
        EXPECT_EQ(received(), kept);
        expectSoundAndEmpty(home);
        if (HasFailure()) break;
    }
}

TEST_F(KillTest, AnUploadKilledAnywhereIsMadeExactlyOnce) {
    signIn();
    cacheLease();
    ASSERT_EQ(run(signArguments()).status, 0);
    const std::vector<std::string> arguments{"--json", "sync"};
    for (const testing::KillPoint& point : pointsOf(arguments)) {
        SCOPED_TRACE(point.description());
        const fs::path home = freshHome();
        service_.forgetEnvelopes();
        testing::KillTracer::run(command(home, arguments), point);
        const std::size_t sent = received();
        EXPECT_GE(sent + envelopesOnDevice(home), 1u) << "on the service or whole on the device";
        const Run synced = runIn(home, {"--json", "sync"});
        EXPECT_EQ(synced.status, 0) << synced.output << synced.errors;
        const auto envelopes = service_.receivedEnvelopes();
        ASSERT_EQ(envelopes.size(), 1u) << sent << " before the second run";
        EXPECT_EQ(envelopes[0].warnings, std::vector<std::string>());
        expectSoundAndEmpty(home);
        if (HasFailure()) break;
    }
}

} // namespace

} // namespace norvane
