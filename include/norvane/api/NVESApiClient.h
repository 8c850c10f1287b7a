#pragma once

#include <norvane/api/NVESRequest.h>
#include <norvane/api/NVESResponseDeserializer.h>
#include <norvane/api/NVESSanitizer.h>
#include <norvane/platform/HttpSession.h>
#include <norvane/platform/Url.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace norvane {

class NVESConfiguration;

/// Sends service operations below one base address, whose path counts as a folder. It stays alive until the
/// last of its requests has ended. Any thread may call.
///
/// Each request is numbered, from 1, across all clients. Cancelling only forgets the number: the transfer
/// goes on and its result is dropped. Cookies are never kept, redirects never followed; plain http is refused
/// but on loopback.
class NVESApiClient : public std::enable_shared_from_this<NVESApiClient> {
    struct Private {};

  public:
    static std::shared_ptr<NVESApiClient> withBaseURL(Url baseURL);
    static std::shared_ptr<NVESApiClient> make(); ///< over the shared configuration's `host`
    NVESApiClient(Private, Url baseURL);
    ~NVESApiClient();
    NVESApiClient(const NVESApiClient&) = delete;
    NVESApiClient& operator=(const NVESApiClient&) = delete;

    /// Sends the request and gives its id at once. With files it is a multipart POST whatever the method
    /// says. Throws NVMException for parameter values that cannot be sent; everything else that is wrong with
    /// a request reaches the completion.
    std::uint64_t requestWithPath(const NVESRequest& request, NVESCompletion completionBlock);
    /// The same with each form parameter as a JSON part: creating an envelope with its documents.
    std::uint64_t envelopeCreateWithCompletionBlock(const NVESRequest& request,
                                                    NVESCompletion completionBlock);
    /// The same with the bytes as the whole body, of the request's content type.
    std::uint64_t imageWithCompletionBlock(const NVESRequest& request, const Data& imageData,
                                           NVESCompletion completionBlock);

    /// A header of every request; an absent value removes it. The request's own parameters go before.
    void setHeaderValue(const std::optional<std::string>& value, const std::string& forKey);

    const Url& baseURL() const { return baseURL_; }
    std::chrono::seconds timeoutInterval() const; ///< without any progress; 60 at creation
    void setTimeoutInterval(std::chrono::seconds interval);
    /// The header fields of the last answer received.
    HttpHeaders HTTPResponseHeaders() const;
    /// Who is trusted, as the shared configuration said when the client was made.
    const CertificatePolicy& customSecurityPolicy() const { return certificates_; }
    NVESConfiguration& configuration() const;
    const NVESSanitizer& sanitizer() const { return sanitizer_; }
    const NVESResponseDeserializer& responseDeserializer() const { return deserializer_; }

    // The state of the process.
    /// Set by the reachability of every client's network: true while no network can be reached. Requests are
    /// sent all the same.
    static void setOfflineState(bool state);
    static bool getOfflineState();
    /// Whether GET requests without header parameters may be answered from the response cache. Off until the
    /// host switches it on.
    static void setCacheEnabled(bool enabled);
    static bool getCacheEnabled();
    static void setReachabilityStatus(int status); ///< -1 unknown, 0 not reachable, more: reachable
    static int getReachabilityStatus();            ///< 0 at start
    /// Called at each change, on the reachability monitor's thread, with no lock held.
    static void setReachabilityChangeBlock(std::function<void(int status)> changeBlock);
    static void clearCache();
    /// Bounds of the response cache in bytes; 4,194,304 and 33,554,432 until the host sets others.
    static void configureCacheWithMemoryAndDiskCapacity(std::uint64_t memorySize, std::uint64_t diskSize);
    static std::size_t requestQueueSize(); ///< requests neither ended nor cancelled
    static std::uint64_t nextRequestId();  ///< counts up, from 1
    static std::uint64_t queueRequest();   ///< a new id, which counts as in flight
    static void cancelRequest(std::uint64_t requestId);
    /// Whether the id was still in flight; it no longer is.
    static bool executeRequestWithId(std::uint64_t requestId);
    /// Hands the error to the completion as a request that was never sent would: later, on the session's
    /// thread.
    static std::uint64_t refuseRequest(NVMError error, NVESCompletion completionBlock);

  private:
    std::uint64_t send(const NVESRequest& request, const Data* image, bool jsonForm,
                       NVESCompletion completion);
    struct Expected {
        std::string type;
        bool isJson;
        bool isFile;
    };
    void complete(const Expected& expected, const std::string& trace, const Result<HttpResponse>& answer,
                  const NVESCompletion& completion);
    Result<NVESResult> received(const Expected& expected, const HttpResponse& response);

    const Url baseURL_;
    const NVESSanitizer sanitizer_{};
    const NVESResponseDeserializer deserializer_{};
    CertificatePolicy certificates_;
    mutable std::mutex mutex_; ///< guards the members below
    std::chrono::seconds timeout_{60};
    HttpHeaders defaultHeaders_;
    HttpHeaders responseHeaders_;
    std::shared_ptr<void> reachability_; ///< set once, at creation
};

} // namespace norvane
