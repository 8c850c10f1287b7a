#include "tests/support/Certificates.h"

#include <openssl/bio.h>
#include <openssl/ec.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/x509v3.h>

#include <ctime>
#include <stdexcept>

namespace norvane {
namespace {

using Key = std::shared_ptr<EVP_PKEY>;
using Certificate = std::shared_ptr<X509>;

void require(bool succeeded) {
    if (!succeeded) throw std::runtime_error("a certificate for the test could not be made");
}

Key makeKey() {
    Key key(EVP_EC_gen("P-256"), &EVP_PKEY_free);
    require(key != nullptr);
    return key;
}

template <class Write>
std::string pem(Write write) {
    const std::unique_ptr<BIO, decltype(&BIO_free)> memory(BIO_new(BIO_s_mem()), &BIO_free);
    require(memory && write(memory.get()) == 1);
    char* bytes = nullptr;
    const long size = BIO_get_mem_data(memory.get(), &bytes);
    return std::string(bytes, static_cast<std::size_t>(size));
}

std::string pemOf(const Certificate& certificate) {
    return pem([&](BIO* memory) { return PEM_write_bio_X509(memory, certificate.get()); });
}

std::string pemOf(const Key& key) {
    return pem([&](BIO* memory) {
        return PEM_write_bio_PrivateKey(memory, key.get(), nullptr, nullptr, 0, nullptr, nullptr);
    });
}

void extend(X509* certificate, X509* issuer, int kind, const std::string& value) {
    X509V3_CTX context;
    X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
    const std::unique_ptr<X509_EXTENSION, decltype(&X509_EXTENSION_free)> extension(
        X509V3_EXT_conf_nid(nullptr, &context, kind, value.c_str()), &X509_EXTENSION_free);
    require(extension && X509_add_ext(certificate, extension.get(), -1) == 1);
}

/// A certificate without extensions and signature.
Certificate draft(const std::string& name, const Key& key, const CertificateTerms& terms) {
    Certificate certificate(X509_new(), &X509_free);
    std::uint64_t serial = 0;
    require(certificate && RAND_bytes(reinterpret_cast<unsigned char*>(&serial), sizeof serial) == 1);
    X509_set_version(certificate.get(), X509_VERSION_3);
    ASN1_INTEGER_set_uint64(X509_get_serialNumber(certificate.get()), serial >> 1);
    const std::time_t now = std::time(nullptr);
    ASN1_TIME_set(X509_getm_notBefore(certificate.get()),
                  now + std::chrono::seconds(terms.validFrom).count());
    ASN1_TIME_set(X509_getm_notAfter(certificate.get()),
                  now + std::chrono::seconds(terms.validUntil).count());
    X509_NAME_add_entry_by_txt(X509_get_subject_name(certificate.get()), "CN", MBSTRING_UTF8,
                               reinterpret_cast<const unsigned char*>(name.c_str()), -1, -1, 0);
    require(X509_set_pubkey(certificate.get(), key.get()) == 1);
    return certificate;
}

void sign(const Certificate& certificate, const Certificate& issuer, const Key& issuerKey) {
    X509_set_issuer_name(certificate.get(), X509_get_subject_name(issuer.get()));
    require(X509_sign(certificate.get(), issuerKey.get(), EVP_sha256()) > 0);
}

void addHosts(const Certificate& certificate, const CertificateTerms& terms) {
    std::string names;
    for (const std::string& host : terms.hosts) {
        const bool isAddress = host.find_first_not_of("0123456789.") == std::string::npos;
        names += (names.empty() ? "" : ",") + std::string(isAddress ? "IP:" : "DNS:") + host;
    }
    extend(certificate.get(), nullptr, NID_subject_alt_name, names);
}

} // namespace

CertificateAuthority::CertificateAuthority(const std::string& name)
    : key_(makeKey())
    , certificate_(draft(name, key_, {{}, std::chrono::hours(-48), std::chrono::hours(48)})) {
    extend(certificate_.get(), certificate_.get(), NID_basic_constraints, "critical,CA:TRUE");
    extend(certificate_.get(), certificate_.get(), NID_key_usage, "critical,keyCertSign");
    sign(certificate_, certificate_, key_);
    pem_ = pemOf(certificate_);
}

ServerIdentity CertificateAuthority::issue(const CertificateTerms& terms) const {
    const Key key = makeKey();
    const Certificate certificate = draft(terms.hosts.front(), key, terms);
    addHosts(certificate, terms);
    sign(certificate, certificate_, key_);
    return {pemOf(certificate), pemOf(key)};
}

ServerIdentity selfSignedIdentity(const CertificateTerms& terms) {
    const Key key = makeKey();
    const Certificate certificate = draft(terms.hosts.front(), key, terms);
    addHosts(certificate, terms);
    sign(certificate, certificate, key);
    return {pemOf(certificate), pemOf(key)};
}

} // namespace norvane
