#include "src/platform/http/ConnectionLane.h"

#include <norvane/platform/NVMException.h>

#include <openssl/ssl.h>

namespace norvane {
namespace {

/// Takes the place of OpenSSL's own verification, which it runs itself unless invalid certificates are
/// allowed.
int verifyPinned(X509_STORE_CTX* presented, void* trust) {
    const auto& required = *static_cast<const Trust*>(trust);
    if (required.verifiesPeer && X509_verify_cert(presented) != 1) return 0;
    if (!required.pin->admits(presented)) {
        X509_STORE_CTX_set_error(presented, X509_V_ERR_APPLICATION_VERIFICATION);
        return 0;
    }
    X509_STORE_CTX_set_error(presented, X509_V_OK);
    return 1;
}

CURLcode prepareTls(CURL*, void* context, void* trust) {
    auto* const tls = static_cast<SSL_CTX*>(context);
    SSL_CTX_set_keylog_callback(tls, nullptr);
    if (static_cast<const Trust*>(trust)->pin) {
        SSL_CTX_set_verify(tls, SSL_VERIFY_PEER, nullptr);
        SSL_CTX_set_cert_verify_callback(tls, &verifyPinned, trust);
    }
    return CURLE_OK;
}

} // namespace

Result<Trust> Trust::of(const CertificatePolicy& policy) {
    Trust trust{!policy.allowsInvalidCertificates, policy.validatesHostName, std::nullopt};
    if (policy.pinnedCertificateFile) {
        auto pin = CertificatePin::load(*policy.pinnedCertificateFile);
        if (!pin) return pin.error();
        trust.pin = std::move(*pin);
    }
    return trust;
}

bool Trust::operator==(const Trust& other) const {
    return verifiesPeer == other.verifiesPeer && verifiesHost == other.verifiesHost &&
           pin.has_value() == other.pin.has_value() && (!pin || pin->der() == other.pin->der());
}

ConnectionLane::ConnectionLane(Trust trust, std::optional<std::filesystem::path> trustAnchorFile)
    : trust_(std::move(trust))
    , trustAnchorFile_(std::move(trustAnchorFile))
    , share_(curl_share_init()) {
    if (!share_) throw NVMException("HttpSessionException", "out of memory");
    curl_share_setopt(share_, CURLSHOPT_SHARE, CURL_LOCK_DATA_CONNECT);
    curl_share_setopt(share_, CURLSHOPT_SHARE, CURL_LOCK_DATA_SSL_SESSION);
}

ConnectionLane::~ConnectionLane() {
    for (CURL* handle : idle_)
        curl_easy_cleanup(handle);
    curl_share_cleanup(share_);
}

CURL* ConnectionLane::take() {
    CURL* handle = nullptr;
    if (idle_.empty()) {
        handle = curl_easy_init();
    } else {
        handle = idle_.back();
        idle_.pop_back();
    }
    if (!handle) return nullptr;
    applyTrust(handle);
    ++taken_;
    return handle;
}

void ConnectionLane::giveBack(CURL* handle) {
    curl_easy_reset(handle);
    idle_.push_back(handle);
    --taken_;
}

void ConnectionLane::applyTrust(CURL* handle) {
    curl_easy_setopt(handle, CURLOPT_SHARE, share_);
    curl_easy_setopt(handle, CURLOPT_SSLVERSION, long{CURL_SSLVERSION_TLSv1_2});
    curl_easy_setopt(handle, CURLOPT_SSL_VERIFYPEER, trust_.verifiesPeer ? 1L : 0L);
    curl_easy_setopt(handle, CURLOPT_SSL_VERIFYHOST, trust_.verifiesHost ? 2L : 0L);
    if (trustAnchorFile_) {
        curl_easy_setopt(handle, CURLOPT_CAINFO, trustAnchorFile_->c_str());
        curl_easy_setopt(handle, CURLOPT_CAPATH, nullptr);
    }
    curl_easy_setopt(handle, CURLOPT_SSL_CTX_FUNCTION, &prepareTls);
    curl_easy_setopt(handle, CURLOPT_SSL_CTX_DATA, &trust_);
}

} // namespace norvane
