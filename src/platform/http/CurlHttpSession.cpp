#include "src/platform/http/CurlHttpSession.h"

#include "src/platform/Adapters.h"
#include "src/platform/http/CompletionThread.h"
#include "src/platform/http/RequestRules.h"
#include "src/platform/http/ResponseCache.h"
#include "src/platform/http/TransferLoop.h"

namespace norvane {

/// What requests on their way share. They keep it alive until they have ended.
class CurlHttpSession::Core : public std::enable_shared_from_this<Core> {
  public:
    Core(const std::shared_ptr<Files>& files, std::optional<std::filesystem::path> trustAnchorFile,
         std::shared_ptr<Clock> clock)
        : temporaryFolder_(files->temporaryFolder())
        , clock_(std::move(clock))
        , cache_(files)
        , loop_(std::move(trustAnchorFile)) {}

    ResponseCache& cache() { return cache_; }

    void send(HttpRequest request, Completion completion) {
        if (!isCacheable(request)) return transmit(std::move(request), std::nullopt, std::move(completion));
        if (auto refused = refusal(request)) return fail(std::move(*refused), std::move(completion));
        // The cache reads files, which the sender must not wait for.
        completions_.post([self = shared_from_this(), request = std::move(request),
                           completion = std::move(completion)]() mutable {
            self->sendThroughCache(std::move(request), std::move(completion));
        });
    }

    void download(HttpRequest request, Completion completion) {
        transmit(std::move(request), temporaryFolder_, std::move(completion));
    }

    void shutDown() {
        loop_.stop();
        completions_.finish();
    }

  private:
    void fail(NVMError error, Completion completion) {
        completions_.post(
            [error = std::move(error), completion = std::move(completion)] { completion(error); });
    }

    void transmit(HttpRequest request, std::optional<std::filesystem::path> folder, Completion completion) {
        if (auto refused = refusal(request)) return fail(std::move(*refused), std::move(completion));
        const bool changes = request.method != "GET" && request.method != "HEAD";
        std::string changedKey = changes ? cacheKeyOfUrl(request.url) : std::string();
        loop_.submit(std::make_unique<Transfer>(std::move(request), std::move(folder)),
                     [self = shared_from_this(), completion = std::move(completion),
                      changedKey = std::move(changedKey)](Result<HttpResponse> result) mutable {
                         self->completions_.post([self, completion = std::move(completion),
                                                  changedKey = std::move(changedKey),
                                                  result = std::move(result)]() mutable {
                             if (!changedKey.empty()) self->cache_.forget(changedKey);
                             completion(std::move(result));
                         });
                     });
    }

    void sendThroughCache(HttpRequest request, Completion completion) {
        std::string key = cacheKey(request);
        auto known = cache_.find(key);
        const Date asked = clock_->now();
        if (known && isFresh(*known, asked)) return completion(std::move(known->response));
        if (known) request = revalidating(std::move(request), *known);
        transmit(std::move(request), std::nullopt,
                 [self = shared_from_this(), key = std::move(key), known = std::move(known), asked,
                  generation = cache_.generation(),
                  completion = std::move(completion)](Result<HttpResponse> result) mutable {
                     if (result) self->remember(key, std::move(known), *result, asked, generation);
                     completion(std::move(result));
                 });
    }

    /// Keeps the answer, and puts the kept one in the place of a 304.
    void remember(const std::string& key, std::optional<CachedResponse> known, HttpResponse& answer,
                  Date asked, std::uint64_t generation) {
        CachedResponse latest{answer, asked, clock_->now()};
        if (known && answer.status == 304) {
            latest = refreshed(std::move(*known), answer, asked, latest.received);
            answer = latest.response;
        }
        if (isStorable(latest.response))
            cache_.store(key, latest, generation);
        else if (latest.response.status < 500)
            cache_.forget(key);
    }

    const std::filesystem::path temporaryFolder_;
    const std::shared_ptr<Clock> clock_;
    ResponseCache cache_;
    TransferLoop loop_;
    CompletionThread completions_;
};

CurlHttpSession::CurlHttpSession(std::shared_ptr<Files> files,
                                 std::optional<std::filesystem::path> trustAnchorFile,
                                 std::shared_ptr<Clock> clock)
    : core_(std::make_shared<Core>(files, std::move(trustAnchorFile), std::move(clock))) {}

CurlHttpSession::~CurlHttpSession() { core_->shutDown(); }

void CurlHttpSession::send(HttpRequest request, Completion completion) {
    const auto core = core_; // the completion may destroy the session before we are through
    core->send(std::move(request), std::move(completion));
}

void CurlHttpSession::download(HttpRequest request, Completion completion) {
    const auto core = core_;
    core->download(std::move(request), std::move(completion));
}

void CurlHttpSession::clearCache() { core_->cache().clear(); }

void CurlHttpSession::setCacheCapacity(std::uint64_t memoryBytes, std::uint64_t diskBytes) {
    core_->cache().setCapacity(memoryBytes, diskBytes);
}

std::shared_ptr<HttpSession> makeCurlHttpSession(std::shared_ptr<Files> files,
                                                 std::optional<std::filesystem::path> trustAnchorFile,
                                                 std::shared_ptr<Clock> clock) {
    return std::make_shared<CurlHttpSession>(std::move(files), std::move(trustAnchorFile), std::move(clock));
}

} // namespace norvane
