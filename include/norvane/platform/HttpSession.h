#pragma once

#include <norvane/platform/Data.h>
#include <norvane/platform/NVMError.h>
#include <norvane/platform/Result.h>
#include <norvane/platform/Url.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace norvane {

/// Domain of errors of the transport; the code is the cause's number (libcurl's in the default adapter).
inline constexpr std::string_view kTransportErrorDomain = "NorvaneTransportErrorDomain";
/// User-information keys of transport errors; each is there only when it is known.
/// Boolean, in errors that came up after the request had begun: whether all of the request may have been
/// sent. When false, the service cannot have acted on it; when true, the outcome is unknown.
inline constexpr std::string_view kTransportRequestSentKey = "NorvaneBodySent";
/// The request's address, without user, query and fragment.
inline constexpr std::string_view kTransportUrlKey = "NorvaneURL";
inline constexpr std::string_view kTransportCurlCodeKey = "NorvaneCurlCode";
/// OpenSSL's number for what is wrong with a certificate.
inline constexpr std::string_view kTransportVerifyResultKey = "NorvaneVerifyResult";
/// What the library below said, for logs.
inline constexpr std::string_view kTransportDetailKey = "NorvaneDetail";

/// Causes that every adapter reports with these codes, whatever library it stands on.
enum class TransportError : std::int64_t {
    CouldNotConnect = 7,
    TimedOut = 28,
    TlsHandshakeFailed = 35,
    ConnectionLost = 56, ///< the connection ended before the answer did
    CertificateRefused = 60,
    TooLarge = 63,  ///< the answer exceeds 64 MiB in memory, or 1 GiB in a file
    Refused = 1001, ///< the request breaks a rule of the session: plain http off loopback, control characters
    Shutdown = 1002,  ///< the session ended before the answer came
    FileError = 1003, ///< a download could not be written or a body could not be read
};

/// A request body that is read once, front to back: it cannot be rewound, so that nothing below can send it
/// twice. The session calls it on its own thread, never concurrently.
class HttpBody {
  public:
    virtual ~HttpBody() = default;
    /// Bytes in all, known before the first is read.
    virtual std::uint64_t size() const = 0;
    /// Fills at most `capacity` bytes and answers how many; 0 at the end; an error ends the request.
    virtual Result<std::size_t> read(char* buffer, std::size_t capacity) = 0;

    static std::shared_ptr<HttpBody> fromData(Data bytes);
};

using HttpHeaders = std::vector<std::pair<std::string, std::string>>;

/// Who is trusted to be the server. Verification of chain, dates and host name is on unless
/// `allowsInvalidCertificates` is set; a pinned certificate must match besides, whatever else is allowed.
struct CertificatePolicy {
    /// PEM or DER file of a certificate that the server's chain must contain: the server's own, or one that
    /// it was issued under.
    std::optional<std::string> pinnedCertificateFile{};
    bool allowsInvalidCertificates = false;
    bool validatesHostName = true;
    friend bool operator==(const CertificatePolicy&, const CertificatePolicy&) = default;
};

struct HttpRequest {
    std::string method = "GET";
    Url url;
    HttpHeaders headers{};            ///< sent in this order; control characters in one refuse the request
    std::shared_ptr<HttpBody> body{}; ///< may be null
    /// Seconds without any progress until the request times out.
    std::chrono::seconds idleTimeout{60};
    /// Whether the answer may come from, and go to, the shared response cache (GET only, RFC 9111 rules).
    bool usesCache = false;
    CertificatePolicy certificates{};
};

struct HttpResponse {
    int status = 0;
    HttpHeaders headers{}; ///< names as received
    Data body{};           ///< empty for a download that succeeded
    /// Where a download with a 2xx status lies; the receiver owns the file and removes it.
    std::optional<std::filesystem::path> file{};

    /// The first header of that name, ignoring case.
    std::optional<std::string> header(std::string_view name) const;
};

/// Sends each request exactly once: no retry, no redirect followed, no cookie kept, no "Expect" header.
/// https only, and http on loopback. The session frames the message: a request that brings a
/// "Content-Length", "Transfer-Encoding" or "Expect" header of its own is refused.
class HttpSession {
  public:
    /// A response of any status, or the transport's error.
    using Completion = std::function<void(Result<HttpResponse>)>;

    virtual ~HttpSession() = default; ///< ends what is in flight with `Shutdown`, then returns
    /// Any thread may call; never blocks. The completion runs exactly once, on the session's completion
    /// thread, one at a time, never inside this call. It may start further requests.
    virtual void send(HttpRequest request, Completion completion) = 0;
    /// As `send`, but a 2xx body goes straight to a fresh file in the session's temporary folder; bodies of
    /// other statuses arrive in memory. The cache has no part in it.
    virtual void download(HttpRequest request, Completion completion) = 0;
    /// Drops every cached response.
    virtual void clearCache() = 0;
    /// Bounds of the response cache in bytes; shrinks at once when it holds more.
    virtual void setCacheCapacity(std::uint64_t memoryBytes, std::uint64_t diskBytes) = 0;
};

} // namespace norvane
