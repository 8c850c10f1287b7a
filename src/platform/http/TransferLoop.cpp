#include "src/platform/http/TransferLoop.h"

#include "src/platform/http/CurlSetup.h"
#include "src/platform/http/TransportErrors.h"

#include <norvane/platform/NVMException.h>

#include <algorithm>
#include <csignal>
#include <iterator>

namespace norvane {
namespace {

constexpr std::size_t kMaxActive = 16;
constexpr std::size_t kMaxLanes = 4; ///< idle ones beyond go when a new one is made
constexpr int kIdlePollMilliseconds = 60'000;
constexpr std::chrono::milliseconds kSweepInterval{100};

CURLM* makeMulti() {
    setUpCurl();
    CURLM* multi = curl_multi_init();
    if (!multi) throw NVMException("HttpSessionException", "libcurl could not be started");
    curl_multi_setopt(multi, CURLMOPT_PIPELINING, long{CURLPIPE_NOTHING});
    curl_multi_setopt(multi, CURLMOPT_MAXCONNECTS, long{kMaxActive});
    return multi;
}

/// OpenSSL writes to sockets whose other end has gone, which must not end the host by SIGPIPE.
void blockSignals() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, nullptr);
}

NVMError shutdownError(const Transfer& transfer) {
    return transfer.error(TransportError::Shutdown,
                          "The request was ended because the application closed it.");
}

} // namespace

TransferLoop::TransferLoop(std::optional<std::filesystem::path> trustAnchorFile)
    : trustAnchorFile_(std::move(trustAnchorFile))
    , multi_(makeMulti())
    , thread_([this] { run(); }) {}

TransferLoop::~TransferLoop() {
    stop();
    curl_multi_cleanup(multi_);
}

void TransferLoop::submit(std::unique_ptr<Transfer> transfer, Done done) {
    {
        const std::lock_guard lock(mutex_);
        if (!stopping_) {
            submitted_.push_back({std::move(transfer), std::move(done)});
            curl_multi_wakeup(multi_);
            return;
        }
    }
    done(shutdownError(*transfer));
}

void TransferLoop::stop() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
        curl_multi_wakeup(multi_);
    }
    if (thread_.joinable()) thread_.join();
}

void TransferLoop::run() {
    blockSignals();
    while (takeSubmitted()) {
        startWaiting();
        int running = 0;
        curl_multi_perform(multi_, &running);
        collectFinished();
        if (!waiting_.empty() && active_.size() < kMaxActive) continue;
        curl_multi_poll(multi_, nullptr, 0, endStalled(), nullptr);
    }
    endAll();
    lanes_.clear();
}

/// False once the loop is to stop.
bool TransferLoop::takeSubmitted() {
    const std::lock_guard lock(mutex_);
    std::move(submitted_.begin(), submitted_.end(), std::back_inserter(waiting_));
    submitted_.clear();
    return !stopping_;
}

void TransferLoop::startWaiting() {
    while (!waiting_.empty() && active_.size() < kMaxActive) {
        Job job = std::move(waiting_.front());
        waiting_.pop_front();
        start(std::move(job));
    }
}

void TransferLoop::start(Job job) {
    const HttpRequest& request = job.transfer->request();
    auto trust = Trust::of(request.certificates);
    if (!trust) return job.done(trust.error());
    job.lane = laneFor(std::move(*trust));
    CURL* const handle = job.lane->take();
    if (!handle) return job.done(curlError(CURLE_OUT_OF_MEMORY, 0, {}, evidence(request.url)));
    job.transfer->begin(handle, job.lane->sockets(), Transfer::Clock::now());
    curl_multi_add_handle(multi_, handle);
    active_.push_back(std::move(job));
}

void TransferLoop::collectFinished() {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi_, &left)) {
        if (message->msg != CURLMSG_DONE) continue;
        const auto job = std::find_if(active_.begin(), active_.end(), [message](const Job& candidate) {
            return candidate.transfer->handle() == message->easy_handle;
        });
        if (job != active_.end()) end(job, message->data.result);
    }
}

void TransferLoop::end(std::vector<Job>::iterator position, CURLcode result) {
    Job job = std::move(*position);
    active_.erase(position);
    CURL* const handle = job.transfer->handle();
    auto outcome = job.transfer->outcome(result);
    curl_multi_remove_handle(multi_, handle);
    job.lane->giveBack(handle);
    job.done(std::move(outcome));
}

int TransferLoop::endStalled() {
    const auto now = Transfer::Clock::now();
    if (active_.empty()) return kIdlePollMilliseconds;
    if (now < nextSweep_) return static_cast<int>(kSweepInterval.count());
    nextSweep_ = now + kSweepInterval;
    auto earliest = now + std::chrono::milliseconds(kIdlePollMilliseconds);
    for (std::size_t i = active_.size(); i-- > 0;) {
        const auto deadline = active_[i].transfer->deadline(now);
        if (deadline > now)
            earliest = std::min(earliest, deadline);
        else
            end(active_.begin() + static_cast<std::ptrdiff_t>(i), CURLE_OPERATION_TIMEDOUT);
    }
    const auto pause = std::chrono::ceil<std::chrono::milliseconds>(earliest - now);
    return waiting_.empty() ? static_cast<int>(pause.count()) : 0;
}

void TransferLoop::endAll() {
    for (Job& job : active_) {
        const NVMError error = shutdownError(*job.transfer);
        curl_multi_remove_handle(multi_, job.transfer->handle());
        job.lane->giveBack(job.transfer->handle());
        job.done(error);
    }
    active_.clear();
    for (Job& job : waiting_)
        job.done(shutdownError(*job.transfer));
    waiting_.clear();
}

ConnectionLane* TransferLoop::laneFor(Trust trust) {
    for (const auto& lane : lanes_)
        if (lane->trust() == trust) return lane.get();
    if (lanes_.size() >= kMaxLanes) std::erase_if(lanes_, [](const auto& lane) { return lane->isIdle(); });
    lanes_.push_back(std::make_unique<ConnectionLane>(std::move(trust), trustAnchorFile_));
    return lanes_.back().get();
}

} // namespace norvane
