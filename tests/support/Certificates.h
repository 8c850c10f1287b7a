#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

struct evp_pkey_st;
struct x509_st;

namespace norvane {

/// What a server shows and proves, as PEM texts.
struct ServerIdentity {
    std::string certificateChain; ///< the server's own certificate first
    std::string privateKey;
};

struct CertificateTerms {
    /// DNS names and IP addresses that the certificate is for; the first is its common name too.
    std::vector<std::string> hosts{"localhost", "127.0.0.1"};
    /// Relative to now.
    std::chrono::hours validFrom{-24};
    std::chrono::hours validUntil{24};
};

/// Issues certificates at run time, so that none in the tree can expire. Keys are P-256.
class CertificateAuthority {
  public:
    explicit CertificateAuthority(const std::string& name = "Test Authority");

    /// PEM.
    const std::string& certificate() const { return pem_; }
    ServerIdentity issue(const CertificateTerms& terms = {}) const;

  private:
    std::shared_ptr<evp_pkey_st> key_;
    std::shared_ptr<x509_st> certificate_;
    std::string pem_;
};

ServerIdentity selfSignedIdentity(const CertificateTerms& terms = {});

} // namespace norvane
