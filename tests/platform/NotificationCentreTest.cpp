#include "src/platform/Adapters.h"
#include "tests/support/Event.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace norvane {
namespace {

TEST(NotificationCentre, TellsObserversInOrderOnThePostingThreadUntilTheirTokenGoes) {
    const auto centre = makeLocalNotificationCentre();
    std::string heard;
    const auto first = centre->addObserver("a", [&](const Notification& n) { heard += "1" + n.name; });
    auto second = centre->addObserver("", [&](const Notification& n) { heard += "2" + n.name; });
    const auto third = centre->addObserver("a", [&](const Notification&) { heard += "3"; });
    centre->post({"a", {}, {}});
    centre->post({"b", {}, {}});
    second.reset();
    centre->post({"a", {}, {}});
    EXPECT_EQ(heard, "1a2a32b1a3");
}

TEST(NotificationCentre, LetsObserversPostSubscribeAndUnsubscribeInsideACall) {
    const auto centre = makeLocalNotificationCentre();
    std::string heard;
    std::shared_ptr<void> self, other, late;
    self = centre->addObserver("a", [&](const Notification&) {
        heard += "self ";
        self.reset();
        other.reset();
        late = centre->addObserver("b", [&](const Notification&) { heard += "late "; });
        centre->post({"b", {}, {}});
    });
    other = centre->addObserver("a", [&](const Notification&) { heard += "other "; });
    centre->post({"a", {}, {}});
    centre->post({"a", {}, {}});
    EXPECT_EQ(heard, "self late ");
}

TEST(NotificationCentre, EndsATokenOnlyWhenARunningCallHasReturned) {
    const auto centre = makeLocalNotificationCentre();
    Event inCall, mayReturn;
    std::atomic<bool> returned = false;
    auto token = centre->addObserver("a", [&](const Notification&) {
        inCall.set();
        EXPECT_TRUE(mayReturn.wait());
        returned = true;
    });
    std::thread poster([&] { centre->post({"a", {}, {}}); });
    ASSERT_TRUE(inCall.wait());
    std::thread releaser([&] { mayReturn.set(); });
    token.reset();
    EXPECT_TRUE(returned);
    releaser.join();
    poster.join();
}

TEST(NotificationCentre, KeepsCallsApartFromDestroyedObserversUnderStress) {
    const auto centre = makeLocalNotificationCentre();
    std::atomic<bool> stop = false;
    std::vector<std::thread> posters;
    for (int i = 0; i < 2; ++i) {
        posters.emplace_back([&] {
            while (!stop)
                centre->post({"a", {}, {}});
        });
    }
    for (int i = 0; i < 100; ++i) {
        auto counter = std::make_unique<std::atomic<int>>(0);
        auto token = centre->addObserver("a", [raw = counter.get()](const Notification&) { ++*raw; });
        while (*counter == 0)
            std::this_thread::yield();
        token.reset();
        counter.reset(); // a call after this would touch freed memory
    }
    stop = true;
    for (auto& poster : posters)
        poster.join();
}

} // namespace
} // namespace norvane
