#pragma once

#include <norvane/platform/Result.h>

#include <memory>
#include <string>

struct x509_st;
struct x509_store_ctx_st;

namespace norvane {

/// A certificate that the server must prove to have, or to have been issued under.
class CertificatePin {
  public:
    /// Reads a PEM or DER file of at most 1 MiB. The error's code is `CertificateRefused`.
    static Result<CertificatePin> load(const std::string& file);

    /// The certificate's bytes: pins are the same when these are.
    const std::string& der() const { return der_; }

    /// Whether the certificate that the context is about, the server's own, is the pinned one or leads to it
    /// by signatures. It is not enough that the server shows the pinned one along with others: anybody can.
    /// Dates are not looked at; verification, where it is on, did that.
    bool admits(x509_store_ctx_st* presented) const;

  private:
    explicit CertificatePin(std::shared_ptr<x509_st> certificate);
    std::shared_ptr<x509_st> certificate_;
    std::string der_;
};

} // namespace norvane
