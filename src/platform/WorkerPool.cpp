#include "src/platform/WorkerPool.h"

#include <boost/asio/post.hpp>
#include <boost/asio/thread_pool.hpp>

#include <thread>

namespace norvane {

namespace {

/// More than cores, since a queue's task may read a file or wait for another queue.
constexpr std::size_t kThreadCount = 4;

} // namespace

struct WorkerPool::Threads {
    boost::asio::thread_pool pool{kThreadCount};
};

WorkerPool::WorkerPool()
    : threads_(new Threads, [](Threads* threads) {
        // A job may hold the last reference, and a thread cannot join itself.
        if (threads->pool.get_executor().running_in_this_thread()) {
            std::thread([threads] { delete threads; }).detach();
        } else {
            delete threads;
        }
    }) {}

void WorkerPool::post(Task job) const {
    boost::asio::post(threads_->pool, [job = std::move(job), keepAlive = threads_] { job(); });
}

} // namespace norvane
