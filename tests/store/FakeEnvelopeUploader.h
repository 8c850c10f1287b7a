#pragma once

#include "tests/support/Event.h"

#include <norvane/api/NVESEnvelopes.h>
#include <norvane/store/EnvelopeUploader.h>

#include <deque>
#include <mutex>
#include <thread>

namespace norvane {

/// A service in memory that answers as the test has arranged. Answers come from a thread of their own.
class FakeEnvelopeUploader final : public EnvelopeUploader {
  public:
    enum class Outcome {
        Accepted,
        AcceptedButAnswerLost,
        AnswerWithoutId,
        Refused, ///< with `refusalCode`
        NotReached,
        Unanswered, ///< the completion is dropped
    };

    ~FakeEnvelopeUploader() override {
        for (auto& thread : threads_)
            thread.join();
    }

    /// What becomes of the next uploads, in order; all others are accepted.
    std::deque<Outcome> outcomes;
    std::string refusalCode = "RECIPIENT_UPDATE_FAILED";
    bool lookUpFails = false;
    std::function<void()> duringUpload; ///< runs before the answer

    /// The transaction identifiers in the order in which the service took the envelopes.
    std::vector<std::string> taken() const {
        const std::lock_guard lock(mutex_);
        return taken_;
    }
    int uploads() const {
        const std::lock_guard lock(mutex_);
        return uploads_;
    }
    int lookUps() const {
        const std::lock_guard lock(mutex_);
        return lookUps_;
    }

    void upload(std::shared_ptr<NVESEnvelopeDefinition> envelope, Completion completion) override {
        const std::lock_guard lock(mutex_);
        ++uploads_;
        Outcome outcome = Outcome::Accepted;
        if (!outcomes.empty()) {
            outcome = outcomes.front();
            outcomes.pop_front();
        }
        const std::string id = envelope->transactionId.value_or("");
        const bool takes = outcome == Outcome::Accepted || outcome == Outcome::AcceptedButAnswerLost ||
                           outcome == Outcome::AnswerWithoutId;
        if (takes) taken_.push_back(id);
        if (outcome == Outcome::Unanswered) return;
        threads_.emplace_back([this, answer = answerOf(outcome, id), completion = std::move(completion)] {
            if (duringUpload) duringUpload();
            completion(answer);
        });
    }

    void lookUp(const std::vector<std::string>& transactionIds, LookupCompletion completion) override {
        const std::lock_guard lock(mutex_);
        ++lookUps_;
        Result<std::map<std::string, std::string>> found = std::map<std::string, std::string>{};
        for (const auto& id : transactionIds)
            if (std::find(taken_.begin(), taken_.end(), id) != taken_.end()) (*found)[id] = "service-" + id;
        if (lookUpFails) found = NVMError::make("test", 1, "no network");
        threads_.emplace_back([found, completion = std::move(completion)] { completion(found); });
    }

  private:
    Answer answerOf(Outcome outcome, const std::string& id) const {
        switch (outcome) {
        case Outcome::Accepted:
            return {"service-" + id, std::nullopt, true};
        case Outcome::Refused: {
            NVMError error("test", 400, {{"NSLocalizedDescription", "refused"}});
            error.userInfo["NVESResponseObject"] = Dictionary{{"errorCode", refusalCode}};
            return {std::nullopt, error, true};
        }
        case Outcome::NotReached:
            return {std::nullopt, NVMError::make("test", 7, "no network"), true};
        default:
            return {std::nullopt, NVMError::make("test", 28, "timed out"), false};
        }
    }

    mutable std::mutex mutex_; ///< guards all below
    std::vector<std::string> taken_;
    std::vector<std::thread> threads_;
    int uploads_ = 0;
    int lookUps_ = 0;
};

} // namespace norvane
