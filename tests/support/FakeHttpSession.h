#pragma once

#include "src/platform/http/CompletionThread.h"

#include <norvane/platform/HttpSession.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace norvane {

/// Answers from a script in the place of a network, by the rules of every session. Caches nothing. Without an
/// answer left, requests fail with `CouldNotConnect`.
class FakeHttpSession final : public HttpSession {
  public:
    struct Sent {
        HttpRequest request;
        std::string body; ///< all of it; the request's own body is read to its end
        bool isDownload = false;
    };
    using Script = std::function<Result<HttpResponse>(const Sent&)>;

    explicit FakeHttpSession(std::filesystem::path downloadFolder);
    ~FakeHttpSession() override;

    /// Asked on the completion thread about each request for which no answer is queued.
    void answerWith(Script script);
    /// Answers one request, before the script is asked; in order.
    void enqueue(Result<HttpResponse> answer);
    /// Requests wait from now on, as if the server was slow, until `release`.
    void hold();
    void release();
    /// What was sent so far, refused requests left out.
    std::vector<Sent> sent() const;

    void send(HttpRequest request, Completion completion) override;
    void download(HttpRequest request, Completion completion) override;
    void clearCache() override {}
    void setCacheCapacity(std::uint64_t, std::uint64_t) override {}

  private:
    class State;
    void begin(HttpRequest request, bool isDownload, Completion completion);
    void answerLater();

    const std::shared_ptr<State> state_; ///< outlives this object while a last completion returns
    CompletionThread completions_;
};

} // namespace norvane
