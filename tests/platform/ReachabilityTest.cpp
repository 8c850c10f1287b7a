#include "src/platform/NetlinkReachability.h"
#include "tests/support/FakeReachability.h"

#include <gtest/gtest.h>
#include <sched.h>

#include <condition_variable>
#include <cstdlib>
#include <future>
#include <mutex>
#include <optional>
#include <thread>

namespace norvane {
namespace {

using namespace std::chrono_literals;

template <class Kind>
class ReachabilityContract : public ::testing::Test {};
using Kinds = ::testing::Types<NetlinkReachability, FakeReachability>;
TYPED_TEST_SUITE(ReachabilityContract, Kinds);

TYPED_TEST(ReachabilityContract, TellsEachObserverThePresentStatusOnItsOwnThread) {
    TypeParam reachability;
    for (int i = 0; i < 2; ++i) {
        std::promise<std::pair<int, std::thread::id>> told;
        const auto token = reachability.observe([&](int status) {
            told.set_value({status, std::this_thread::get_id()}); // throws when it is called twice
        });
        auto future = told.get_future();
        ASSERT_EQ(future.wait_for(10s), std::future_status::ready);
        const auto [status, thread] = future.get();
        EXPECT_EQ(status, reachability.status());
        EXPECT_NE(thread, std::this_thread::get_id());
    }
}

TYPED_TEST(ReachabilityContract, WaitsForARunningCallbackWhenItsTokenGoes) {
    TypeParam reachability;
    std::promise<void> entered;
    std::promise<void> mayReturn;
    std::atomic<bool> returned = false;
    auto token = reachability.observe([&](int) {
        entered.set_value();
        mayReturn.get_future().wait();
        returned = true;
    });
    entered.get_future().wait();
    auto removal = std::async(std::launch::async, [&] {
        token.reset();
        return returned.load();
    });
    mayReturn.set_value();
    EXPECT_TRUE(removal.get());
}

TYPED_TEST(ReachabilityContract, LetsACallbackEndItsOwnObservationAndTheMonitor) {
    auto reachability = std::make_unique<TypeParam>();
    std::promise<void> stored;
    std::promise<void> done;
    std::shared_ptr<void> token = reachability->observe([&, wait = stored.get_future().share()](int) {
        wait.wait();
        token.reset();
        reachability.reset();
        done.set_value();
    });
    stored.set_value();
    EXPECT_EQ(done.get_future().wait_for(10s), std::future_status::ready);
}

/// Follows a monitor through changes that the test makes.
class Followed {
  public:
    bool reaches(int status) {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, 10s, [&] { return last_ == status; });
    }

  private:
    std::mutex mutex_; ///< guards what follows
    std::condition_variable changed_;
    std::optional<int> last_;
    NetlinkReachability reachability_;
    std::shared_ptr<void> token_ = reachability_.observe([this](int status) {
        const std::lock_guard lock(mutex_);
        last_ = status;
        changed_.notify_all();
    });
};

bool run(const char* command) { return std::system(command) == 0; }

TEST(NetlinkReachability, FollowsTheNetworkOfItsNamespace) {
    // Only the thread that makes it lives in the network, and what it starts.
    std::thread([] {
        if (::unshare(CLONE_NEWNET) != 0) GTEST_SKIP() << "needs the right to make a network";
        if (!run("ip link add v0 type veth peer name v1 2>&1")) GTEST_SKIP() << "needs virtual interfaces";
        Followed followed;
        EXPECT_TRUE(followed.reaches(0)) << "there is but a loopback interface";
        EXPECT_TRUE(run("ip link set lo up && ip link set v0 up && ip link set v1 up"));
        EXPECT_TRUE(run("ip addr add 192.0.2.9/24 dev v0"));
        EXPECT_TRUE(followed.reaches(1));
        EXPECT_TRUE(run("ip link set v1 down"));
        EXPECT_TRUE(followed.reaches(0)) << "the other end was pulled out";
    }).join();
}

TEST(FakeReachability, TellsChangesUntilTheTokenGoes) {
    FakeReachability reachability(1);
    std::vector<int> told;
    auto token = reachability.observe([&](int status) { told.push_back(status); });
    for (const int status : {1, 0, 0, -1, 2})
        reachability.setStatus(status);
    reachability.settle();
    token.reset();
    reachability.setStatus(0);
    reachability.settle();
    EXPECT_EQ(told, (std::vector<int>{1, 0, -1, 2}));
    EXPECT_EQ(reachability.status(), 0);
}

} // namespace
} // namespace norvane
