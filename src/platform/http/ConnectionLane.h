#pragma once

#include "src/platform/http/CertificatePin.h"
#include "src/platform/http/OpenSockets.h"

#include <norvane/platform/HttpSession.h>

#include <curl/curl.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

namespace norvane {

/// What a certificate policy comes to, once its file is read.
struct Trust {
    bool verifiesPeer = true;
    bool verifiesHost = true;
    std::optional<CertificatePin> pin;

    static Result<Trust> of(const CertificatePolicy& policy);
    bool operator==(const Trust& other) const;
};

/// The connections and TLS sessions made under one trust, and the handles that use them. Nothing made here is
/// ever used for a request of another trust: libcurl itself would not tell two pins apart. Belongs to the
/// loop's thread.
class ConnectionLane {
  public:
    ConnectionLane(Trust trust, std::optional<std::filesystem::path> trustAnchorFile);
    ~ConnectionLane(); ///< every handle must have been given back
    ConnectionLane(const ConnectionLane&) = delete;
    ConnectionLane& operator=(const ConnectionLane&) = delete;

    const Trust& trust() const { return trust_; }
    bool isIdle() const { return taken_ == 0; }
    OpenSockets& sockets() { return sockets_; }
    /// A handle with the lane's trust and nothing else set; null when memory is short.
    CURL* take();
    void giveBack(CURL* handle);

  private:
    void applyTrust(CURL* handle);

    Trust trust_;
    std::optional<std::filesystem::path> trustAnchorFile_;
    OpenSockets sockets_;
    CURLSH* share_;
    std::vector<CURL*> idle_;
    std::size_t taken_ = 0;
};

} // namespace norvane
