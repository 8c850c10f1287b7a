#include "src/platform/http/Transfer.h"

#include "src/platform/AsciiText.h"
#include "src/platform/http/TransportErrors.h"

#include <algorithm>
#include <cstdlib>

namespace norvane {
namespace {

constexpr std::uint64_t kMaxBytesInMemory = 64ULL << 20;
constexpr std::uint64_t kMaxBytesInFile = 1ULL << 30;
constexpr std::size_t kMaxHeaderBytes = 256 << 10;
/// Larger pieces make uploads no faster (tried up to 2 MiB).
constexpr std::uint64_t kMaxUploadPiece = 128 << 10;
constexpr std::uint64_t kMinUploadPiece = 16 << 10;
constexpr long kReceiveBuffer = 128 << 10;
/// Older idle connections are likely to have been forgotten by something in between.
constexpr long kMaxIdleSeconds = 60;

std::int64_t measured(CURL* handle, CURLINFO what) {
    curl_off_t value = 0;
    curl_easy_getinfo(handle, what, &value);
    return value;
}

std::int64_t counted(CURL* handle, CURLINFO what) {
    long value = 0;
    curl_easy_getinfo(handle, what, &value);
    return value;
}

} // namespace

Transfer::Transfer(HttpRequest request, std::optional<std::filesystem::path> downloadFolder)
    : request_(std::move(request))
    , downloadFolder_(std::move(downloadFolder)) {}

void Transfer::begin(CURL* handle, OpenSockets& sockets, Clock::time_point now) {
    handle_ = handle;
    sockets_ = &sockets;
    lastMove_ = now;
    curl_easy_setopt(handle_, CURLOPT_PRIVATE, this);
    curl_easy_setopt(handle_, CURLOPT_ERRORBUFFER, detail_.data());
    curl_easy_setopt(handle_, CURLOPT_URL, request_.url.absoluteString().c_str());
    applyRules();
    applyMethod();
    applyHeaders();
    applyAnswer();
}

void Transfer::applyRules() {
    curl_easy_setopt(handle_, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(handle_, CURLOPT_QUICK_EXIT, 1L); // a name look-up that hangs must not hold up the loop
    curl_easy_setopt(handle_, CURLOPT_PATH_AS_IS, 1L);
    curl_easy_setopt(handle_, CURLOPT_DISALLOW_USERNAME_IN_URL, 1L);
    curl_easy_setopt(handle_, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(handle_, CURLOPT_FOLLOWLOCATION, 0L);
    curl_easy_setopt(handle_, CURLOPT_HTTP_VERSION, long{CURL_HTTP_VERSION_1_1});
    curl_easy_setopt(handle_, CURLOPT_TCP_KEEPALIVE, 1L);
    curl_easy_setopt(handle_, CURLOPT_MAXAGE_CONN, kMaxIdleSeconds);
    curl_easy_setopt(handle_, CURLOPT_CONNECTTIMEOUT_MS,
                     static_cast<long>(std::chrono::milliseconds(patience()).count()));
    curl_easy_setopt(handle_, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    if (request_.url.isLoopback()) curl_easy_setopt(handle_, CURLOPT_PROXY, "");
    curl_easy_setopt(handle_, CURLOPT_OPENSOCKETFUNCTION, &Transfer::onConnect);
    curl_easy_setopt(handle_, CURLOPT_OPENSOCKETDATA, this);
    curl_easy_setopt(handle_, CURLOPT_CLOSESOCKETFUNCTION, &OpenSockets::onClose);
    curl_easy_setopt(handle_, CURLOPT_CLOSESOCKETDATA, sockets_);
    curl_easy_setopt(handle_, CURLOPT_PREREQFUNCTION, &Transfer::onAttempt);
    curl_easy_setopt(handle_, CURLOPT_PREREQDATA, this);
}

void Transfer::applyMethod() {
    const std::string& method = request_.method;
    const std::uint64_t size = request_.body ? request_.body->size() : 0;
    if (size > 0) {
        applyBody(size);
    } else if (method == "HEAD") {
        curl_easy_setopt(handle_, CURLOPT_NOBODY, 1L);
    } else if (method == "POST" || method == "PUT" || method == "PATCH") {
        curl_easy_setopt(handle_, CURLOPT_POST, 1L);
        curl_easy_setopt(handle_, CURLOPT_POSTFIELDS, "");
        curl_easy_setopt(handle_, CURLOPT_POSTFIELDSIZE, 0L);
    }
    if (method != "GET" || size > 0) curl_easy_setopt(handle_, CURLOPT_CUSTOMREQUEST, method.c_str());
}

void Transfer::applyBody(std::uint64_t size) {
    curl_easy_setopt(handle_, CURLOPT_POST, 1L);
    curl_easy_setopt(handle_, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(size));
    curl_easy_setopt(handle_, CURLOPT_UPLOAD_BUFFERSIZE,
                     static_cast<long>(std::clamp(size, kMinUploadPiece, kMaxUploadPiece)));
    curl_easy_setopt(handle_, CURLOPT_READFUNCTION, &Transfer::onRead);
    curl_easy_setopt(handle_, CURLOPT_READDATA, this);
    curl_easy_setopt(handle_, CURLOPT_SEEKFUNCTION, &Transfer::onRewind);
    curl_easy_setopt(handle_, CURLOPT_SEEKDATA, this);
}

void Transfer::applyHeaders() {
    bool hasType = false;
    const auto add = [this](const std::string& line) {
        curl_slist* longer = curl_slist_append(headerLines_.get(), line.c_str());
        if (!longer) return;
        static_cast<void>(headerLines_.release()); // the longer list takes it over
        headerLines_.reset(longer);
    };
    for (const auto& [name, value] : request_.headers) {
        hasType = hasType || asciiEqualsIgnoringCase(name, "Content-Type");
        const std::string_view content = asciiTrimmed(value);
        // libcurl takes "Name:" for a wish to leave the header out and "Name;" for an empty one.
        add(content.empty() ? name + ";" : name + ": " + std::string(content));
    }
    add("Expect:");
    if (!hasType) add("Content-Type:");
    curl_easy_setopt(handle_, CURLOPT_HTTPHEADER, headerLines_.get());
}

void Transfer::applyAnswer() {
    const std::uint64_t limit = downloadFolder_ ? kMaxBytesInFile : kMaxBytesInMemory;
    curl_easy_setopt(handle_, CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(limit));
    curl_easy_setopt(handle_, CURLOPT_BUFFERSIZE, kReceiveBuffer);
    curl_easy_setopt(handle_, CURLOPT_HEADERFUNCTION, &Transfer::onHeader);
    curl_easy_setopt(handle_, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(handle_, CURLOPT_WRITEFUNCTION, &Transfer::onBody);
    curl_easy_setopt(handle_, CURLOPT_WRITEDATA, this);
}

Transfer::Clock::time_point Transfer::deadline(Clock::time_point now) {
    if (const std::int64_t present = moved(); present != moved_) {
        moved_ = present;
        lastMove_ = now;
    }
    return lastMove_ + patience();
}

std::chrono::seconds Transfer::patience() const {
    return std::clamp<std::chrono::seconds>(request_.idleTimeout, std::chrono::seconds(1),
                                            std::chrono::hours(24));
}

/// A sum that changes whenever the connection gets further or a byte passes either way.
std::int64_t Transfer::moved() const {
    return measured(handle_, CURLINFO_SIZE_UPLOAD_T) + measured(handle_, CURLINFO_SIZE_DOWNLOAD_T) +
           measured(handle_, CURLINFO_NAMELOOKUP_TIME_T) + measured(handle_, CURLINFO_CONNECT_TIME_T) +
           measured(handle_, CURLINFO_APPCONNECT_TIME_T) + counted(handle_, CURLINFO_REQUEST_SIZE) +
           counted(handle_, CURLINFO_HEADER_SIZE) - sockets_->unconfirmed(connection_);
}

Result<HttpResponse> Transfer::outcome(CURLcode result) {
    if (!failure_ && result == CURLE_OK) return answer();
    if (failure_) return *failure_;
    if (secondAttempt_) result = CURLE_RECV_ERROR;
    long verdict = 0;
    curl_easy_getinfo(handle_, CURLINFO_SSL_VERIFYRESULT, &verdict);
    Dictionary facts = evidence(request_.url);
    facts.emplace(kTransportRequestSentKey, mayHaveBeenSent());
    return curlError(result, verdict, detail_.data(), std::move(facts));
}

Result<HttpResponse> Transfer::answer() {
    response_.body = Data(std::move(received_));
    if (!downloadFolder_ || response_.status / 100 != 2) return std::move(response_);
    if (!file_ && !takeIntoFile(nullptr, 0)) return *failure_;
    response_.file = file_->keep();
    return std::move(response_);
}

NVMError Transfer::error(TransportError cause, std::string description) const {
    Dictionary facts = evidence(request_.url);
    facts.emplace(kTransportRequestSentKey, mayHaveBeenSent());
    return transportError(cause, std::move(description), std::move(facts));
}

NVMError Transfer::fileFailure(std::string description, const NVMError& cause) const {
    NVMError failure = error(TransportError::FileError, std::move(description));
    failure.userInfo.emplace(kUnderlyingErrorKey, Value::object(std::make_shared<const NVMError>(cause)));
    return failure;
}

/// What libcurl took may have reached the wire: only a request of which bytes are certainly missing counts as
/// not sent.
bool Transfer::mayHaveBeenSent() const {
    return attempted_ && supplied_ >= (request_.body ? request_.body->size() : 0);
}

std::size_t Transfer::supply(char* buffer, std::size_t capacity) {
    const std::uint64_t left = request_.body->size() - supplied_;
    const std::size_t wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left, capacity));
    if (wanted == 0) return 0;
    const auto count = request_.body->read(buffer, wanted);
    if (!count) {
        failure_ = fileFailure("The data to send could not be read.", count.error());
        return CURL_READFUNC_ABORT;
    }
    if (*count == 0 || *count > wanted) {
        failure_ = error(TransportError::FileError, "The data to send is shorter than it was said to be.");
        return CURL_READFUNC_ABORT;
    }
    supplied_ += *count;
    return *count;
}

bool Transfer::takeHeaderLine(std::string_view line) {
    headerBytes_ += line.size();
    if (headerBytes_ > kMaxHeaderBytes) {
        failure_ = error(TransportError::TooLarge, "The server's answer is too large.");
        return false;
    }
    if (line.starts_with("HTTP/")) { // an interim answer may have come before
        response_ = {};
        response_.status = static_cast<int>(counted(handle_, CURLINFO_RESPONSE_CODE));
        return true;
    }
    const auto colon = line.find(':');
    if (colon == std::string_view::npos) return true;
    response_.headers.emplace_back(asciiTrimmed(line.substr(0, colon)), asciiTrimmed(line.substr(colon + 1)));
    if (asciiEqualsIgnoringCase(response_.headers.back().first, "Content-Length") && !downloadFolder_)
        received_.reserve(std::min<std::uint64_t>(
            std::strtoull(response_.headers.back().second.c_str(), nullptr, 10), kMaxBytesInMemory));
    return true;
}

bool Transfer::takeBody(const char* bytes, std::size_t size) {
    const bool intoFile = downloadFolder_ && response_.status / 100 == 2;
    bodyBytes_ += size;
    if (bodyBytes_ > (intoFile ? kMaxBytesInFile : kMaxBytesInMemory)) {
        failure_ = error(TransportError::TooLarge, "The server's answer is too large.");
        return false;
    }
    if (intoFile) return takeIntoFile(bytes, size);
    received_.append(bytes, size);
    return true;
}

bool Transfer::takeIntoFile(const char* bytes, std::size_t size) {
    Failure problem;
    if (!file_) {
        auto created = DownloadFile::create(*downloadFolder_);
        if (created)
            file_.emplace(std::move(*created));
        else
            problem = created.error();
    }
    if (file_ && size > 0) problem = file_->append(bytes, size);
    if (problem) failure_ = fileFailure("The download could not be saved. Check the free space.", *problem);
    return !problem;
}

std::size_t Transfer::onRead(char* buffer, std::size_t size, std::size_t count, void* self) {
    return static_cast<Transfer*>(self)->supply(buffer, size * count);
}

std::size_t Transfer::onHeader(char* line, std::size_t size, std::size_t count, void* self) {
    return static_cast<Transfer*>(self)->takeHeaderLine({line, size * count}) ? size * count : 0;
}

std::size_t Transfer::onBody(char* bytes, std::size_t size, std::size_t count, void* self) {
    return static_cast<Transfer*>(self)->takeBody(bytes, size * count) ? size * count : 0;
}

// When a kept connection dies before the answer, libcurl sends the request again by itself, which would make
// two envelopes of one. The three callbacks that follow refuse whatever that begins with: a new connection,
// the use of another kept one, and the body once more.

curl_socket_t Transfer::onConnect(void* self, curlsocktype, curl_sockaddr* address) {
    if (static_cast<Transfer*>(self)->isSecondAttempt()) return CURL_SOCKET_BAD;
    return static_cast<Transfer*>(self)->sockets_->open(*address);
}

int Transfer::onAttempt(void* self, char*, char*, int remotePort, int localPort) {
    auto& transfer = *static_cast<Transfer*>(self);
    if (transfer.isSecondAttempt()) return CURL_PREREQFUNC_ABORT;
    transfer.attempted_ = true;
    transfer.connection_ = transfer.sockets_->find(localPort, remotePort);
    return CURL_PREREQFUNC_OK;
}

int Transfer::onRewind(void* self, curl_off_t, int) {
    static_cast<Transfer*>(self)->secondAttempt_ = true;
    return CURL_SEEKFUNC_FAIL;
}

bool Transfer::isSecondAttempt() {
    secondAttempt_ = secondAttempt_ || attempted_;
    return secondAttempt_;
}

} // namespace norvane
