#pragma once

#include "src/platform/http/ConnectionLane.h"
#include "src/platform/http/Transfer.h"

#include <norvane/platform/HttpSession.h>

#include <curl/curl.h>

#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace norvane {

/// One thread that drives every transfer. At most sixteen are on the wire at once; others wait their turn.
class TransferLoop {
  public:
    /// Called exactly once a transfer, on the loop's thread, or inside `submit` after `stop`.
    using Done = std::function<void(Result<HttpResponse>)>;

    /// The file, if any, holds the only certificate authority to trust.
    explicit TransferLoop(std::optional<std::filesystem::path> trustAnchorFile);
    ~TransferLoop(); ///< as `stop`

    void submit(std::unique_ptr<Transfer> transfer, Done done);
    /// Ends every transfer with `Shutdown` and returns when the thread has gone.
    void stop();

  private:
    struct Job {
        std::unique_ptr<Transfer> transfer;
        Done done;
        ConnectionLane* lane = nullptr;
    };

    void run();
    bool takeSubmitted();
    void startWaiting();
    void start(Job job);
    void collectFinished();
    void end(std::vector<Job>::iterator job, CURLcode result);
    /// Ends what has not moved for too long; answers how long the loop may sleep.
    int endStalled();
    void endAll();
    ConnectionLane* laneFor(Trust trust);

    const std::optional<std::filesystem::path> trustAnchorFile_;
    CURLM* const multi_; ///< used by the loop's thread, but for waking it up

    std::mutex mutex_;
    std::deque<Job> submitted_; ///< guarded by mutex_
    bool stopping_ = false;     ///< guarded by mutex_

    // The loop's thread owns what follows.
    std::deque<Job> waiting_;
    std::vector<Job> active_;
    std::vector<std::unique_ptr<ConnectionLane>> lanes_;
    Transfer::Clock::time_point nextSweep_;

    std::thread thread_;
};

} // namespace norvane
