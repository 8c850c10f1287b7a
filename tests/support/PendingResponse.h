#pragma once

#include <norvane/platform/HttpSession.h>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <thread>

namespace norvane {

/// Waits for the completion of one request and counts how often it ran.
class PendingResponse {
  public:
    HttpSession::Completion completion() {
        return [state = state_](Result<HttpResponse> result) {
            const std::lock_guard lock(state->mutex);
            ++state->calls;
            state->thread = std::this_thread::get_id();
            state->result = std::move(result);
            state->changed.notify_all();
        };
    }

    /// Throws, which fails the test, when half a minute passes.
    Result<HttpResponse> wait() {
        std::unique_lock lock(state_->mutex);
        if (!state_->changed.wait_for(lock, std::chrono::seconds(30), [this] { return state_->calls > 0; }))
            throw std::runtime_error("the request did not end");
        return *state_->result;
    }

    int calls() const {
        const std::lock_guard lock(state_->mutex);
        return state_->calls;
    }

    std::thread::id thread() const {
        const std::lock_guard lock(state_->mutex);
        return state_->thread;
    }

  private:
    struct State {
        std::mutex mutex; ///< guards what follows
        std::condition_variable changed;
        std::optional<Result<HttpResponse>> result;
        std::thread::id thread;
        int calls = 0;
    };
    const std::shared_ptr<State> state_ = std::make_shared<State>();
};

} // namespace norvane
