#include "src/platform/NetlinkReachability.h"
#include "tests/support/FakeReachability.h"

#include <gtest/gtest.h>

#include <future>

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
