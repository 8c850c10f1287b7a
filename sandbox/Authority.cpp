#include "sandbox/Authority.h"

#include "sandbox/PrivateFile.h"

#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/x509v3.h>

#include <ctime>
#include <memory>
#include <stdexcept>

namespace norvane::sandbox {

namespace {

template <auto Free>
struct Freer {
    template <class T>
    void operator()(T* object) const {
        Free(object);
    }
};
using Certificate = std::unique_ptr<X509, Freer<X509_free>>;
using Key = std::unique_ptr<EVP_PKEY, Freer<EVP_PKEY_free>>;
using Memory = std::unique_ptr<BIO, Freer<BIO_free>>;
using Extension = std::unique_ptr<X509_EXTENSION, Freer<X509_EXTENSION_free>>;

constexpr std::time_t kDay = 86'400;
constexpr std::time_t kAuthorityDays = 3'650;
constexpr std::time_t kServerDays = 365;

template <class T>
T required(T result, const char* what) {
    if (result) return result;
    const char* cause = ERR_reason_error_string(ERR_get_error());
    throw std::runtime_error(std::string("cannot make the certificates, ") + what + (cause ? ": " : "") +
                             (cause ? cause : ""));
}

struct Identity {
    Certificate certificate;
    Key key;
    explicit operator bool() const { return certificate && key; }
};

std::string drained(BIO* memory) {
    char* bytes = nullptr;
    const long length = BIO_get_mem_data(memory, &bytes);
    return {bytes, static_cast<std::size_t>(length)};
}

std::string pemOf(X509* certificate) {
    const Memory memory(BIO_new(BIO_s_mem()));
    required(PEM_write_bio_X509(memory.get(), certificate), "writing a certificate");
    return drained(memory.get());
}

std::string pemOf(EVP_PKEY* key) {
    const Memory memory(BIO_new(BIO_s_mem()));
    required(PEM_write_bio_PrivateKey(memory.get(), key, nullptr, nullptr, 0, nullptr, nullptr),
             "writing a key");
    return drained(memory.get());
}

Identity readIdentity(const std::filesystem::path& certificateFile, const std::filesystem::path& keyFile) {
    const std::string certificate = readFile(certificateFile).value_or("");
    const std::string key = readFile(keyFile).value_or("");
    const Memory first(BIO_new_mem_buf(certificate.data(), static_cast<int>(certificate.size())));
    const Memory second(BIO_new_mem_buf(key.data(), static_cast<int>(key.size())));
    Identity identity{Certificate(PEM_read_bio_X509(first.get(), nullptr, nullptr, nullptr)),
                      Key(PEM_read_bio_PrivateKey(second.get(), nullptr, nullptr, nullptr))};
    ERR_clear_error();
    const bool matching =
        identity && X509_check_private_key(identity.certificate.get(), identity.key.get()) == 1;
    return matching ? std::move(identity) : Identity{};
}

bool isCurrent(X509* certificate, std::time_t now) {
    std::time_t tomorrow = now + kDay;
    return X509_cmp_time(X509_get0_notBefore(certificate), &now) < 0 &&
           X509_cmp_time(X509_get0_notAfter(certificate), &tomorrow) > 0;
}

void extend(X509* certificate, X509* issuer, int kind, const std::string& value) {
    X509V3_CTX context;
    X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
    const Extension extension(
        required(X509V3_EXT_conf_nid(nullptr, &context, kind, value.c_str()), "an extension"));
    required(X509_add_ext(certificate, extension.get(), -1), "an extension");
}

Identity begun(const char* name, std::time_t now, std::time_t days) {
    Identity made{Certificate(required(X509_new(), "a certificate")),
                  Key(required(EVP_EC_gen("P-256"), "a key"))};
    X509* certificate = made.certificate.get();
    unsigned char serial[16];
    required(RAND_bytes(serial, sizeof serial) == 1, "a serial number");
    serial[0] &= 0x7f;
    const std::unique_ptr<BIGNUM, Freer<BN_free>> number(BN_bin2bn(serial, sizeof serial, nullptr));
    BN_to_ASN1_INTEGER(number.get(), X509_get_serialNumber(certificate));
    X509_set_version(certificate, X509_VERSION_3);
    ASN1_TIME_set(X509_getm_notBefore(certificate), now - kDay);
    ASN1_TIME_set(X509_getm_notAfter(certificate), now + days * kDay);
    X509_set_pubkey(certificate, made.key.get());
    X509_NAME* subject = X509_get_subject_name(certificate);
    const auto* text = reinterpret_cast<const unsigned char*>(name);
    required(X509_NAME_add_entry_by_txt(subject, "CN", MBSTRING_UTF8, text, -1, -1, 0), "a name");
    return made;
}

Identity makeAuthority(std::time_t now) {
    Identity made = begun("Norvane sandbox authority", now, kAuthorityDays);
    X509* certificate = made.certificate.get();
    X509_set_issuer_name(certificate, X509_get_subject_name(certificate));
    extend(certificate, certificate, NID_basic_constraints, "critical,CA:TRUE,pathlen:0");
    extend(certificate, certificate, NID_key_usage, "critical,keyCertSign,cRLSign");
    extend(certificate, certificate, NID_subject_key_identifier, "hash");
    required(X509_sign(certificate, made.key.get(), EVP_sha256()), "a signature");
    return made;
}

Identity makeServer(const Identity& authority, const std::string& host, std::time_t now) {
    Identity made = begun("localhost", now, kServerDays);
    X509* certificate = made.certificate.get();
    X509* issuer = authority.certificate.get();
    X509_set_issuer_name(certificate, X509_get_subject_name(issuer));
    std::string names = "DNS:localhost,IP:127.0.0.1,IP:::1";
    if (host != "127.0.0.1" && host != "::1") names += ",IP:" + host;
    extend(certificate, issuer, NID_basic_constraints, "critical,CA:FALSE");
    extend(certificate, issuer, NID_key_usage, "critical,digitalSignature");
    extend(certificate, issuer, NID_ext_key_usage, "serverAuth");
    extend(certificate, issuer, NID_subject_alt_name, names);
    extend(certificate, issuer, NID_subject_key_identifier, "hash");
    extend(certificate, issuer, NID_authority_key_identifier, "keyid:always");
    required(X509_sign(certificate, authority.key.get(), EVP_sha256()), "a signature");
    return made;
}

bool isUsable(const Identity& server, const Identity& authority, const std::string& host, std::time_t now) {
    return server && isCurrent(server.certificate.get(), now) &&
           X509_verify(server.certificate.get(), authority.key.get()) == 1 &&
           X509_check_ip_asc(server.certificate.get(), host.c_str(), 0) == 1;
}

} // namespace

AuthorityFiles prepareAuthority(const std::filesystem::path& folder, const std::string& host,
                                std::chrono::system_clock::time_point now) {
    const std::time_t moment = std::chrono::system_clock::to_time_t(now);
    AuthorityFiles files{folder / "ca.pem", folder / "server.pem", folder / "server.key"};
    const auto authorityKey = folder / "ca.key";
    makePrivateFolder(folder);
    Identity authority = readIdentity(files.authority, authorityKey);
    if (!authority || !isCurrent(authority.certificate.get(), moment)) {
        authority = makeAuthority(moment);
        writePrivateFile(authorityKey, pemOf(authority.key.get()));
        writePrivateFile(files.authority, pemOf(authority.certificate.get()));
    }
    Identity server = readIdentity(files.chain, files.key);
    if (!isUsable(server, authority, host, moment)) {
        server = makeServer(authority, host, moment);
        writePrivateFile(files.key, pemOf(server.key.get()));
        writePrivateFile(files.chain, pemOf(server.certificate.get()) + pemOf(authority.certificate.get()));
    }
    return files;
}

} // namespace norvane::sandbox
