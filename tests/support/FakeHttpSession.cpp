#include "tests/support/FakeHttpSession.h"

#include "src/platform/http/DownloadFile.h"
#include "src/platform/http/RequestRules.h"
#include "src/platform/http/TransportErrors.h"

#include <array>
#include <deque>
#include <mutex>
#include <optional>

namespace norvane {
namespace {

std::string readToEnd(HttpBody& body) {
    std::string bytes;
    std::array<char, 16384> buffer;
    for (auto count = body.read(buffer.data(), buffer.size()); count && *count > 0;
         count = body.read(buffer.data(), buffer.size()))
        bytes.append(buffer.data(), *count);
    return bytes;
}

} // namespace

class FakeHttpSession::State {
  public:
    explicit State(std::filesystem::path downloadFolder)
        : downloadFolder_(std::move(downloadFolder)) {}

    void add(Sent request, Completion completion) {
        const std::lock_guard lock(mutex);
        sent.push_back(request);
        waiting_.push_back({std::move(request), std::move(completion)});
    }

    void answerWaiting() {
        while (auto next = takeWaiting()) {
            next->completion(answerTo(next->request));
        }
    }

    std::mutex mutex; ///< guards everything
    Script script;
    std::deque<Result<HttpResponse>> queued;
    std::vector<Sent> sent;
    bool held = false;
    bool closed = false;

  private:
    struct Waiting {
        Sent request;
        Completion completion;
    };

    std::optional<Waiting> takeWaiting() {
        const std::lock_guard lock(mutex);
        if (waiting_.empty() || (held && !closed)) return std::nullopt;
        Waiting next = std::move(waiting_.front());
        waiting_.pop_front();
        return next;
    }

    Result<HttpResponse> answerTo(const Sent& request) {
        std::optional<Result<HttpResponse>> answer;
        Script chosen;
        {
            const std::lock_guard lock(mutex);
            if (closed) return failure(TransportError::Shutdown, "The session was closed.", request);
            chosen = script;
            if (!queued.empty()) {
                answer = std::move(queued.front());
                queued.pop_front();
            }
        }
        if (!answer && chosen) answer = chosen(request);
        if (!answer) return failure(TransportError::CouldNotConnect, "No answer was scripted.", request);
        if (*answer && request.isDownload && (*answer)->status / 100 == 2) return saved(std::move(**answer));
        return std::move(*answer);
    }

    static Result<HttpResponse> failure(TransportError cause, std::string description, const Sent& request) {
        return transportError(cause, std::move(description), evidence(request.request.url));
    }

    Result<HttpResponse> saved(HttpResponse response) const {
        auto file = DownloadFile::create(downloadFolder_);
        if (!file) return file.error();
        if (auto problem = file->append(response.body.view().data(), response.body.size())) return *problem;
        response.body = {};
        response.file = file->keep();
        return response;
    }

    const std::filesystem::path downloadFolder_;
    std::deque<Waiting> waiting_;
};

FakeHttpSession::FakeHttpSession(std::filesystem::path downloadFolder)
    : state_(std::make_shared<State>(std::move(downloadFolder))) {}

FakeHttpSession::~FakeHttpSession() {
    {
        const std::lock_guard lock(state_->mutex);
        state_->closed = true;
    }
    answerLater();
    completions_.finish();
}

void FakeHttpSession::answerWith(Script script) {
    const std::lock_guard lock(state_->mutex);
    state_->script = std::move(script);
}

void FakeHttpSession::enqueue(Result<HttpResponse> answer) {
    const std::lock_guard lock(state_->mutex);
    state_->queued.push_back(std::move(answer));
}

void FakeHttpSession::hold() {
    const std::lock_guard lock(state_->mutex);
    state_->held = true;
}

void FakeHttpSession::release() {
    {
        const std::lock_guard lock(state_->mutex);
        state_->held = false;
    }
    answerLater();
}

std::vector<FakeHttpSession::Sent> FakeHttpSession::sent() const {
    const std::lock_guard lock(state_->mutex);
    return state_->sent;
}

void FakeHttpSession::send(HttpRequest request, Completion completion) {
    begin(std::move(request), false, std::move(completion));
}

void FakeHttpSession::download(HttpRequest request, Completion completion) {
    begin(std::move(request), true, std::move(completion));
}

void FakeHttpSession::begin(HttpRequest request, bool isDownload, Completion completion) {
    if (auto refused = refusal(request)) {
        completions_.post(
            [error = std::move(*refused), completion = std::move(completion)] { completion(error); });
        return;
    }
    Sent sent{std::move(request), {}, isDownload};
    if (sent.request.body) sent.body = readToEnd(*sent.request.body);
    state_->add(std::move(sent), std::move(completion));
    answerLater();
}

void FakeHttpSession::answerLater() {
    completions_.post([state = state_] { state->answerWaiting(); });
}

} // namespace norvane
