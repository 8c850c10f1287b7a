#include "src/platform/http/TransportErrors.h"

#include <curl/curl.h>
#include <openssl/x509_vfy.h>

#include <array>

namespace norvane {
namespace {

struct Meaning {
    int curlCode;
    std::int64_t code;
    const char* description;
};

constexpr auto number(TransportError cause) { return static_cast<std::int64_t>(cause); }

constexpr const char* kLost = "The connection to the server was lost. Check the network connection.";
constexpr const char* kNoSecurity = "A secure connection to the server could not be made.";
constexpr const char* kNotHttp = "The server's answer could not be understood.";

constexpr std::array kMeanings{
    Meaning{CURLE_UNSUPPORTED_PROTOCOL, CURLE_UNSUPPORTED_PROTOCOL, kNotHttp},
    Meaning{CURLE_COULDNT_RESOLVE_PROXY, CURLE_COULDNT_RESOLVE_PROXY,
            "The network's proxy could not be found. Check the proxy settings."},
    Meaning{CURLE_COULDNT_RESOLVE_HOST, CURLE_COULDNT_RESOLVE_HOST,
            "The server could not be found. Check the network connection and the server's address."},
    Meaning{CURLE_COULDNT_CONNECT, number(TransportError::CouldNotConnect),
            "The server could not be reached. Check the network connection."},
    Meaning{CURLE_WEIRD_SERVER_REPLY, CURLE_WEIRD_SERVER_REPLY, kNotHttp},
    Meaning{CURLE_PARTIAL_FILE, number(TransportError::ConnectionLost), kLost},
    Meaning{CURLE_OPERATION_TIMEDOUT, number(TransportError::TimedOut),
            "The server did not answer in time. Try again later."},
    Meaning{CURLE_SSL_CONNECT_ERROR, number(TransportError::TlsHandshakeFailed), kNoSecurity},
    Meaning{CURLE_SSL_CIPHER, number(TransportError::TlsHandshakeFailed), kNoSecurity},
    Meaning{CURLE_GOT_NOTHING, number(TransportError::ConnectionLost), kLost},
    Meaning{CURLE_SEND_ERROR, number(TransportError::ConnectionLost), kLost},
    Meaning{CURLE_RECV_ERROR, number(TransportError::ConnectionLost), kLost},
    Meaning{CURLE_SEND_FAIL_REWIND, number(TransportError::ConnectionLost), kLost},
    Meaning{CURLE_FILESIZE_EXCEEDED, number(TransportError::TooLarge), "The server's answer is too large."},
    Meaning{CURLE_LOGIN_DENIED, number(TransportError::Refused),
            "The server's address must not hold a user name or password."},
    Meaning{CURLE_SSL_CACERT_BADFILE, CURLE_SSL_CACERT_BADFILE,
            "The file of trusted certificates could not be read."},
};

const char* certificateDescription(long verifyResult) {
    switch (verifyResult) {
    // libcurl compares the name before it asks for the verdict, which is then still unspecified.
    case X509_V_ERR_UNSPECIFIED:
    case X509_V_OK:
    case X509_V_ERR_HOSTNAME_MISMATCH:
        return "The server's certificate is for another server.";
    case X509_V_ERR_CERT_HAS_EXPIRED:
        return "The server's certificate has expired. Check this device's date and time.";
    case X509_V_ERR_CERT_NOT_YET_VALID:
        return "The server's certificate is not valid yet. Check this device's date and time.";
    case X509_V_ERR_DEPTH_ZERO_SELF_SIGNED_CERT:
        return "The server's certificate is signed by nobody but itself.";
    case X509_V_ERR_SELF_SIGNED_CERT_IN_CHAIN:
    case X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT:
    case X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT_LOCALLY:
    case X509_V_ERR_UNABLE_TO_VERIFY_LEAF_SIGNATURE:
        return "The server's certificate was issued by an authority that is not trusted.";
    case X509_V_ERR_CERT_REVOKED:
        return "The server's certificate was revoked.";
    case X509_V_ERR_APPLICATION_VERIFICATION:
        return "The server's certificate is not the one that is expected.";
    default:
        return "The server's certificate could not be verified.";
    }
}

NVMError error(std::int64_t code, std::string description, Dictionary evidence) {
    evidence.insert_or_assign(std::string(kLocalizedDescriptionKey), std::move(description));
    return NVMError(std::string(kTransportErrorDomain), code, std::move(evidence));
}

} // namespace

NVMError transportError(TransportError cause, std::string description, Dictionary evidence) {
    return error(number(cause), std::move(description), std::move(evidence));
}

Dictionary evidence(const Url& url) {
    Dictionary facts;
    std::string address = url.scheme() + "://" + url.host();
    if (const int port = url.port(); port > 0) address += ":" + std::to_string(port);
    facts.emplace(kTransportUrlKey, address + url.path());
    return facts;
}

NVMError curlError(int curlCode, long verifyResult, const std::string& detail, Dictionary evidence) {
    evidence.insert_or_assign(std::string(kTransportCurlCodeKey), std::int64_t{curlCode});
    if (!detail.empty()) evidence.insert_or_assign(std::string(kTransportDetailKey), detail);
    if (curlCode == CURLE_PEER_FAILED_VERIFICATION) {
        evidence.insert_or_assign(std::string(kTransportVerifyResultKey), std::int64_t{verifyResult});
        return error(number(TransportError::CertificateRefused), certificateDescription(verifyResult),
                     std::move(evidence));
    }
    for (const Meaning& meaning : kMeanings)
        if (meaning.curlCode == curlCode)
            return error(meaning.code, meaning.description, std::move(evidence));
    return error(curlCode, std::string("The request failed: ") + curl_easy_strerror(CURLcode(curlCode)) + ".",
                 std::move(evidence));
}

} // namespace norvane
