#include "src/platform/Adapters.h"
#include "tests/support/Event.h"

#include <norvane/platform/NVMException.h>

#include <gtest/gtest.h>

#include <atomic>
#include <numeric>

namespace norvane {
namespace {

using QueueMaker = std::shared_ptr<TaskQueue> (*)(Executors&);

class TaskQueueContract : public ::testing::TestWithParam<QueueMaker> {
  protected:
    std::shared_ptr<Executors> executors_ = makeAsioExecutors(nullptr);
    std::shared_ptr<TaskQueue> queue_ = GetParam()(*executors_);
};

TEST_P(TaskQueueContract, RunsTasksOfSeveralThreadsOneAtATimeAndInOrder) {
    constexpr int kThreads = 4, kTasks = 500;
    std::vector<std::vector<int>> seen(kThreads); // no lock: the queue is the lock
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            for (int i = 0; i < kTasks; ++i) {
                auto& list = seen[static_cast<std::size_t>(thread)];
                if (i % 50 == 0) {
                    queue_->sync([&list, i] { list.push_back(i); });
                } else {
                    queue_->async([&list, i] { list.push_back(i); });
                }
            }
        });
    }
    for (auto& thread : threads)
        thread.join();
    queue_->sync([] {});
    std::vector<int> expected(kTasks);
    std::iota(expected.begin(), expected.end(), 0);
    for (const auto& list : seen)
        EXPECT_EQ(list, expected);
}

TEST_P(TaskQueueContract, KnowsItsOwnTasksAndRefusesToWaitForItself) {
    EXPECT_FALSE(queue_->isCurrent());
    bool wasCurrent = false;
    queue_->sync([&] {
        wasCurrent = queue_->isCurrent();
        EXPECT_THROW(queue_->sync([] {}), NVMException);
    });
    EXPECT_TRUE(wasCurrent);
    EXPECT_THROW(queue_->sync([] { throw NVMException("Test", "thrown inside"); }), NVMException);
    EXPECT_FALSE(queue_->isCurrent());
}

TEST_P(TaskQueueContract, DropsWhatHasNotBegunWhenItGoesAndWaitsForWhatRuns) {
    Event started, released, dropped;
    std::atomic<bool> finished = false;
    queue_->async([&] {
        started.set();
        EXPECT_TRUE(released.wait());
        finished = true;
    });
    std::shared_ptr<void> token(nullptr, [&](void*) { dropped.set(); });
    queue_->async([held = std::move(token)] { ADD_FAILURE() << "a dropped task ran"; });
    ASSERT_TRUE(started.wait());
    std::thread destroyer([this] {
        executors_.reset();
        queue_.reset();
    });
    EXPECT_TRUE(dropped.wait());
    EXPECT_FALSE(finished);
    released.set();
    destroyer.join();
    EXPECT_TRUE(finished);
}

TEST_P(TaskQueueContract, MayGoInsideItsOwnTask) {
    Event finished;
    queue_->async([queue = std::move(queue_), executors = std::move(executors_), &finished]() mutable {
        queue.reset();
        executors.reset();
        finished.set();
    });
    EXPECT_TRUE(finished.wait());
}

INSTANTIATE_TEST_SUITE_P(Serial, TaskQueueContract, ::testing::Values([](Executors& executors) {
                             return executors.makeSerialQueue("test");
                         }));
INSTANTIATE_TEST_SUITE_P(Main, TaskQueueContract,
                         ::testing::Values([](Executors& executors) { return executors.mainQueue(); }));

TEST(SerialQueues, MayWaitForOneAnotherWithoutUsingUpThePool) {
    const auto executors = makeAsioExecutors(nullptr);
    const auto shared = executors->makeSerialQueue("shared");
    std::vector<std::shared_ptr<TaskQueue>> queues;
    int sum = 0;
    Event done;
    constexpr int kQueues = 50;
    for (int i = 0; i < kQueues; ++i) {
        queues.push_back(executors->makeSerialQueue("waiting"));
        queues.back()->async([&] {
            shared->async([&sum] { ++sum; });
            shared->sync([&sum] { ++sum; });
            done.set();
        });
    }
    ASSERT_TRUE(done.wait(kQueues));
    EXPECT_EQ(sum, 2 * kQueues);
}

class Operations : public ::testing::Test {
  protected:
    std::shared_ptr<Operation> make(Task block) {
        return executors_->makeOperation("operation", std::move(block));
    }

    std::shared_ptr<Executors> executors_ = makeAsioExecutors(nullptr);
    std::shared_ptr<OperationQueue> queue_ = executors_->makeOperationQueue("operations");
};

TEST_F(Operations, RunAfterTheirDependenciesAndMayWait) {
    constexpr int kCount = 200;
    std::vector<int> order; // no lock: the dependencies are the lock
    std::vector<std::shared_ptr<Operation>> chain;
    for (int i = 0; i < kCount; ++i) {
        chain.push_back(make([&order, i] { order.push_back(i); }));
        if (i > 0) chain.back()->addDependency(chain[static_cast<std::size_t>(i) - 1]);
    }
    Event begun, released;
    const auto waiting = make([&] {
        begun.set();
        EXPECT_TRUE(released.wait());
    });
    std::reverse(chain.begin(), chain.end());
    queue_->add({waiting});
    queue_->add(chain);
    const auto releasing = make([&] { released.set(); });
    releasing->addDependency(chain.front());
    queue_->add({releasing});
    queue_->waitUntilAllOperationsAreFinished();
    EXPECT_EQ(order.size(), static_cast<std::size_t>(kCount));
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
    EXPECT_TRUE(waiting->isFinished());
    EXPECT_EQ(queue_->operationCount(), 0u);
}

TEST_F(Operations, CancelledBeforeTheyBeginCountAsFinishedAndReleaseWhatWaitsForThem) {
    Event begun, released, dependentRan;
    const auto running = make([&] {
        begun.set();
        EXPECT_TRUE(released.wait());
    });
    const auto cancelled = make([] { ADD_FAILURE() << "a cancelled operation ran"; });
    cancelled->addDependency(running);
    const auto dependent = make([&] { dependentRan.set(); });
    dependent->addDependency(cancelled);
    queue_->add({running, cancelled, dependent});
    ASSERT_TRUE(begun.wait());
    cancelled->cancel();
    EXPECT_TRUE(cancelled->isFinished());
    EXPECT_TRUE(dependentRan.wait());
    running->cancel();
    EXPECT_TRUE(running->isCancelled());
    EXPECT_FALSE(running->isFinished());
    EXPECT_THROW(running->addDependency(cancelled), NVMException);
    EXPECT_THROW(queue_->add({running}), NVMException);
    released.set();
    queue_->waitUntilAllOperationsAreFinished();
    EXPECT_TRUE(running->isFinished());
}

TEST_F(Operations, RefuseToWaitForThemselves) {
    const auto first = make({}), second = make({}), third = make({});
    second->addDependency(first);
    third->addDependency(second);
    EXPECT_THROW(first->addDependency(third), NVMException);
    EXPECT_THROW(first->addDependency(first), NVMException);
    EXPECT_THROW(first->addDependency(nullptr), NVMException);
    const auto waiting =
        make([this] { EXPECT_THROW(queue_->waitUntilAllOperationsAreFinished(), NVMException); });
    queue_->add({waiting});
    queue_->waitUntilAllOperationsAreFinished();
}

TEST_F(Operations, OfAQueueThatGoesAreCancelledOrWaitedFor) {
    Event begun, released;
    std::atomic<bool> finished = false;
    const auto running = make([&] {
        begun.set();
        EXPECT_TRUE(released.wait());
        finished = true;
    });
    const auto waiting = make([] { ADD_FAILURE() << "an operation of a queue that is gone ran"; });
    waiting->addDependency(running);
    const auto elsewhere = executors_->makeOperationQueue("elsewhere");
    Event cancelledSeen;
    const auto observer = make([&] { cancelledSeen.set(); });
    observer->addDependency(waiting);
    elsewhere->add({observer});
    queue_->add({running, waiting});
    ASSERT_TRUE(begun.wait());
    std::thread destroyer([this] { queue_.reset(); });
    EXPECT_TRUE(cancelledSeen.wait());
    EXPECT_TRUE(waiting->isCancelled());
    released.set();
    destroyer.join();
    EXPECT_TRUE(finished);
}

TEST_F(Operations, UnderLoadFinishEachExactlyOnce) {
    constexpr int kCount = 2000;
    std::atomic<int> ran = 0, cancelled = 0;
    std::vector<std::shared_ptr<Operation>> operations;
    for (int i = 0; i < kCount; ++i) {
        operations.push_back(make([&ran] { ++ran; }));
        if (i % 3 == 1) operations.back()->addDependency(operations[static_cast<std::size_t>(i) / 2]);
    }
    std::thread canceller([&] {
        for (int i = 0; i < kCount; i += 7)
            operations[static_cast<std::size_t>(i)]->cancel();
    });
    for (const auto& operation : operations)
        queue_->add({operation});
    canceller.join();
    queue_->waitUntilAllOperationsAreFinished();
    for (const auto& operation : operations) {
        EXPECT_TRUE(operation->isFinished());
        if (operation->isCancelled()) ++cancelled;
    }
    EXPECT_GE(ran, kCount - cancelled);
    EXPECT_LE(ran, kCount);
}

TEST(TaskGroups, NotifyOnceEveryEnterHasItsLeave) {
    const auto executors = makeAsioExecutors(nullptr);
    const auto queue = executors->makeSerialQueue("work");
    const auto group = executors->makeGroup();
    std::atomic<int> done = 0;
    Event notified, notifiedAtOnce;
    constexpr int kCount = 20;
    for (int i = 0; i < kCount; ++i)
        group->enter();
    group->notify(executors->mainQueue(), [&] {
        EXPECT_EQ(done, kCount);
        notified.set();
    });
    for (int i = 0; i < kCount; ++i) {
        queue->async([&] {
            ++done;
            group->leave();
        });
    }
    group->wait();
    EXPECT_TRUE(notified.wait());
    group->notify(queue, [&] { notifiedAtOnce.set(); });
    EXPECT_TRUE(notifiedAtOnce.wait());
    EXPECT_THROW(group->leave(), NVMException);
}

} // namespace
} // namespace norvane
