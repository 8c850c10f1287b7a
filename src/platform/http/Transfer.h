#pragma once

#include "src/platform/http/DownloadFile.h"
#include "src/platform/http/OpenSockets.h"

#include <norvane/platform/HttpSession.h>

#include <curl/curl.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace norvane {

/// One request on its way: hands libcurl the body, gathers the answer and says in the end what became of it.
/// Belongs to the loop's thread once it is begun; it must not move, since libcurl holds its address.
class Transfer {
  public:
    using Clock = std::chrono::steady_clock;

    /// With a folder, a 2xx body goes to a file in it.
    Transfer(HttpRequest request, std::optional<std::filesystem::path> downloadFolder);
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    const HttpRequest& request() const { return request_; }
    CURL* handle() const { return handle_; }

    /// Sets everything but trust on the handle, which the caller adds to a multi handle afterwards. The
    /// sockets are those of the handle's lane.
    void begin(CURL* handle, OpenSockets& sockets, Clock::time_point now);
    /// When the request counts as timed out unless something moves before.
    Clock::time_point deadline(Clock::time_point now);
    /// The answer, or the error that libcurl's result stands for.
    Result<HttpResponse> outcome(CURLcode result);
    NVMError error(TransportError cause, std::string description) const;

  private:
    using Headers = std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)>;

    void applyRules();
    void applyMethod();
    void applyBody(std::uint64_t size);
    void applyHeaders();
    void applyAnswer();

    std::size_t supply(char* buffer, std::size_t capacity);
    bool takeHeaderLine(std::string_view line);
    bool takeBody(const char* bytes, std::size_t size);
    bool takeIntoFile(const char* bytes, std::size_t size);
    Result<HttpResponse> answer();
    NVMError fileFailure(std::string description, const NVMError& cause) const;
    bool mayHaveBeenSent() const;
    std::chrono::seconds patience() const;
    std::int64_t moved() const;

    /// libcurl's callbacks.
    static std::size_t onRead(char* buffer, std::size_t size, std::size_t count, void* self);
    static std::size_t onHeader(char* line, std::size_t size, std::size_t count, void* self);
    static std::size_t onBody(char* bytes, std::size_t size, std::size_t count, void* self);
    static curl_socket_t onConnect(void* self, curlsocktype purpose, curl_sockaddr* address);
    static int onAttempt(void* self, char*, char*, int remotePort, int localPort);
    static int onRewind(void* self, curl_off_t offset, int origin);
    bool isSecondAttempt();

    HttpRequest request_;
    std::optional<std::filesystem::path> downloadFolder_;
    CURL* handle_ = nullptr;
    OpenSockets* sockets_ = nullptr;
    curl_socket_t connection_ = CURL_SOCKET_BAD; ///< once the request goes out
    Headers headerLines_{nullptr, &curl_slist_free_all};
    std::array<char, CURL_ERROR_SIZE> detail_{};

    std::uint64_t supplied_ = 0; ///< bytes of the body handed to libcurl
    bool attempted_ = false;     ///< the request began to be sent on a connection
    bool secondAttempt_ = false; ///< libcurl wanted to send it again
    Failure failure_;            ///< what a callback ended the transfer for

    HttpResponse response_;
    std::size_t headerBytes_ = 0;
    std::uint64_t bodyBytes_ = 0;
    std::string received_;
    std::optional<DownloadFile> file_;

    std::int64_t moved_ = 0;
    Clock::time_point lastMove_;
};

} // namespace norvane
