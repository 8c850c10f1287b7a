#pragma once

#include <norvane/api/NVESRequest.h>
#include <norvane/api/NVESSanitizer.h>
#include <norvane/platform/HttpSession.h>
#include <norvane/platform/Result.h>

#include <string>

namespace norvane {

/// Sets a header, in the place of one of that name in any case.
void setHeader(HttpHeaders& headers, std::string_view name, std::string value);

/// Builds the HTTP request of a service operation. Used once.
class RequestBuilder {
  public:
    struct Built {
        HttpRequest request;
        std::string trace; ///< the body as a debug trace shows it; empty unless the logger is enabled
    };

    RequestBuilder(const NVESRequest& request, const NVESSanitizer& sanitizer, const Url& baseURL)
        : request_(request)
        , sanitizer_(sanitizer)
        , built_{HttpRequest{request.method, baseURL}, {}} {}

    /// `image`: the whole body, or null. `jsonForm`: the body is multipart even without files, and its form
    /// parameters are JSON parts.
    /// Throws NVMException for parameter values that cannot be sent.
    Result<Built> build(HttpHeaders defaultHeaders, const Data* image, bool jsonForm);

  private:
    void sanitizeParameters();
    void applyAuthSettings();
    Failure resolve();
    Failure fillPath(std::string& path) const;
    void addQuery(std::string& path) const;
    Failure addBody(const Data* image, bool jsonForm);
    Failure addMultipart(bool jsonForm);
    void addParameters(const Value& body);
    void setBody(std::string text, std::string_view contentType);
    void chooseCachePolicy();
    void addHeaders();

    const NVESRequest& request_;
    const NVESSanitizer& sanitizer_;
    Dictionary query_;
    Dictionary headers_;
    Dictionary form_;
    Built built_;
};

} // namespace norvane
