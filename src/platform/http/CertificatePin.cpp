#include "src/platform/http/CertificatePin.h"

#include "src/platform/http/TransportErrors.h"

#include <openssl/bio.h>
#include <openssl/err.h>
#include <openssl/pem.h>
#include <openssl/x509.h>
#include <openssl/x509_vfy.h>

#include <filesystem>
#include <system_error>

namespace norvane {
namespace {

constexpr std::uintmax_t kMaxFileSize = 1 << 20;

X509* read(const std::string& file) {
    std::error_code none;
    if (!std::filesystem::is_regular_file(file, none) ||
        std::filesystem::file_size(file, none) > kMaxFileSize)
        return nullptr;
    const std::unique_ptr<BIO, decltype(&BIO_free)> bytes(BIO_new_file(file.c_str(), "rb"), &BIO_free);
    if (!bytes) return nullptr;
    X509* certificate = PEM_read_bio_X509(bytes.get(), nullptr, nullptr, nullptr);
    if (!certificate && BIO_reset(bytes.get()) == 0) certificate = d2i_X509_bio(bytes.get(), nullptr);
    return certificate;
}

} // namespace

CertificatePin::CertificatePin(std::shared_ptr<x509_st> certificate)
    : certificate_(std::move(certificate)) {
    unsigned char* bytes = nullptr;
    const int size = i2d_X509(certificate_.get(), &bytes);
    if (size > 0) der_.assign(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size));
    OPENSSL_free(bytes);
}

Result<CertificatePin> CertificatePin::load(const std::string& file) {
    const std::shared_ptr<X509> certificate(read(file), &X509_free);
    ERR_clear_error(); // a DER file leaves the complaint of the PEM reader behind
    if (!certificate)
        return transportError(TransportError::CertificateRefused,
                              "The file of the expected server certificate could not be read.", {});
    return CertificatePin(certificate);
}

bool CertificatePin::admits(x509_store_ctx_st* presented) const {
    X509* const own = X509_STORE_CTX_get0_cert(presented);
    if (!own) return false;
    if (X509_cmp(own, certificate_.get()) == 0) return true;

    const std::unique_ptr<X509_STORE, decltype(&X509_STORE_free)> onlyPin(X509_STORE_new(), &X509_STORE_free);
    const std::unique_ptr<X509_STORE_CTX, decltype(&X509_STORE_CTX_free)> path(X509_STORE_CTX_new(),
                                                                               &X509_STORE_CTX_free);
    if (!onlyPin || !path || X509_STORE_add_cert(onlyPin.get(), certificate_.get()) != 1 ||
        X509_STORE_CTX_init(path.get(), onlyPin.get(), own, X509_STORE_CTX_get0_untrusted(presented)) != 1)
        return false;
    X509_STORE_CTX_set_flags(path.get(), X509_V_FLAG_PARTIAL_CHAIN | X509_V_FLAG_NO_CHECK_TIME);
    const bool leadsToPin = X509_verify_cert(path.get()) == 1;
    ERR_clear_error();
    return leadsToPin;
}

} // namespace norvane
