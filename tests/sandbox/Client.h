#pragma once

#include "sandbox/Json.h"
#include "sandbox/SandboxService.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace norvane::sandbox {

struct Reply {
    int failure = 0; ///< libcurl's code; 0 when an answer arrived whole
    int status = 0;
    std::string contentType;
    std::string body; ///< what arrived of it

    Json json() const { return parseJson(body).value; }
    std::string errorCode() const { return json().text("errorCode"); }
};

/// An HTTP client that knows nothing of the service but its address and its authority.
class Client {
  public:
    using Headers = std::vector<std::pair<std::string, std::string>>;

    explicit Client(const SandboxService& service);
    ~Client();
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    Reply get(const std::string& path) { return send("GET", path); }
    /// With the API password of the user; `path` below the account when it does not begin with a slash.
    Reply send(const std::string& method, const std::string& path, const std::string& body = {},
               const std::string& contentType = "application/json");
    /// With exactly these headers.
    Reply sendWith(const Headers& headers, const std::string& method, const std::string& path,
                   const std::string& body = {});
    void trust(const std::string& certificateFile) { authority_ = certificateFile; }
    void timeOutAfter(long milliseconds) { timeOut_ = milliseconds; }

    static std::string authentication(const std::string& user, const std::string& password,
                                      const std::string& key);

  private:
    const SandboxService& service_;
    std::string authority_;
    long timeOut_ = 30'000;
    struct Handle;
    std::unique_ptr<Handle> handle_;
};

} // namespace norvane::sandbox
