#include "src/api/ClientState.h"
#include "src/api/DeserializationErrors.h"
#include "src/api/RequestBuilder.h"
#include "src/platform/AsciiText.h"

#include <norvane/api/NVESApiClient.h>
#include <norvane/api/NVESConfiguration.h>
#include <norvane/api/NVESErrors.h>
#include <norvane/api/NVESLogger.h>
#include <norvane/platform/Json.h>
#include <norvane/platform/Platform.h>
#include <norvane/sdk/NVMAPIErrorResponse.h>

#include <filesystem>

namespace norvane {
namespace {

constexpr std::string_view kMethod = "requestWithPath";
constexpr std::string_view kJsonType = "application/json";

bool isDownload(const NVESRequest& request) {
    return request.responseType == "NSURL*" || request.responseType == "NSURL";
}

CertificatePolicy policyOf(const NVESConfiguration& configuration) {
    return {configuration.sslCaCert, !configuration.verifySSL, configuration.verifySSL};
}

/// The decoded body of an error answer: JSON, else its text.
Value decoded(const Data& body) {
    if (body.empty()) return {};
    auto json = parseJson(body.view());
    if (json) return *std::move(json);
    const auto text = NVESResponseDeserializer().deserialize(body.view(), "id");
    return text ? text->value() : Value();
}

NVMError statusError(const HttpResponse& response) {
    const Value body = decoded(response.body);
    std::string description = "Request failed (" + std::to_string(response.status) + ")";
    if (const std::string* message = body["message"].asString(); message && !message->empty())
        description += ": " + quotedAnswer(*message);
    NVMError error = NVMError::make(std::string(kStatusErrorDomain), response.status, std::move(description));
    if (body.isNull()) return error;
    error.userInfo.emplace(kServiceResponseObjectKey, body);
    const Dictionary* dictionary = body.asDictionary();
    if (dictionary && dictionary->contains("errorCode")) {
        const auto record = std::make_shared<NVMAPIErrorResponse>(*dictionary);
        error.userInfo.emplace(kMapperErrorObjectsKey, Array{Value::object(record)});
    }
    return error;
}

/// Nobody will own the download of a cancelled request.
void discard(const Result<HttpResponse>& answer) {
    if (!answer || !answer->file) return;
    std::error_code ignored;
    std::filesystem::remove(*answer->file, ignored);
}

} // namespace

std::shared_ptr<NVESApiClient> NVESApiClient::withBaseURL(Url baseURL) {
    ClientState::prepareSession();
    auto client = std::make_shared<NVESApiClient>(Private(), std::move(baseURL));
    client->reachability_ = Platform::current().reachability->observe(&ClientState::reachabilityChanged);
    return client;
}

std::shared_ptr<NVESApiClient> NVESApiClient::make() {
    return withBaseURL(NVESConfiguration::sharedConfig().host);
}

NVESApiClient::NVESApiClient(Private, Url baseURL)
    : baseURL_(std::move(baseURL))
    , certificates_(policyOf(NVESConfiguration::sharedConfig())) {}

NVESApiClient::~NVESApiClient() = default;

std::uint64_t NVESApiClient::requestWithPath(const NVESRequest& request, NVESCompletion completionBlock) {
    return send(request, nullptr, false, std::move(completionBlock));
}

std::uint64_t NVESApiClient::envelopeCreateWithCompletionBlock(const NVESRequest& request,
                                                               NVESCompletion completionBlock) {
    return send(request, nullptr, true, std::move(completionBlock));
}

std::uint64_t NVESApiClient::imageWithCompletionBlock(const NVESRequest& request, const Data& imageData,
                                                      NVESCompletion completionBlock) {
    return send(request, &imageData, false, std::move(completionBlock));
}

std::uint64_t NVESApiClient::send(const NVESRequest& request, const Data* image, bool jsonForm,
                                  NVESCompletion completion) {
    HttpHeaders headers;
    std::chrono::seconds timeout;
    {
        const std::lock_guard lock(mutex_);
        headers = defaultHeaders_;
        timeout = timeout_;
    }
    auto built = RequestBuilder(request, sanitizer_, baseURL_).build(std::move(headers), image, jsonForm);
    if (!built) return refuseRequest(built.error(), std::move(completion));
    built->request.idleTimeout = timeout;
    built->request.certificates = certificates_;

    const std::uint64_t requestId = queueRequest();
    HttpSession::Completion completed = [self = shared_from_this(), requestId, type = request.responseType,
                                         isJson = request.responseContentType == kJsonType,
                                         isFile = isDownload(request), trace = std::move(built->trace),
                                         completion =
                                             std::move(completion)](const Result<HttpResponse>& answer) {
        if (!executeRequestWithId(requestId)) return discard(answer);
        self->complete({type, isJson, isFile}, trace, answer, completion);
    };
    const auto session = Platform::current().http;
    if (isDownload(request))
        session->download(std::move(built->request), std::move(completed));
    else
        session->send(std::move(built->request), std::move(completed));
    return requestId;
}

void NVESApiClient::complete(const Expected& expected, const std::string& trace,
                             const Result<HttpResponse>& answer, const NVESCompletion& completion) {
    const auto report = [&](const NVESResult& result, const std::optional<NVMError>& error) {
        NVESLogger::sharedLogger().logResponse(kMethod, answer ? answer->body.view() : std::string_view(),
                                               trace, error);
        if (completion) completion(result, error);
    };
    if (!answer) return report({}, answer.error());
    const Result<NVESResult> result = received(expected, *answer);
    if (!result) return report({}, result.error());
    report(*result, std::nullopt);
}

Result<NVESResult> NVESApiClient::received(const Expected& expected, const HttpResponse& response) {
    {
        const std::lock_guard lock(mutex_);
        responseHeaders_ = response.headers;
    }
    if (response.status < 200 || response.status > 299) return statusError(response);
    if (expected.isFile && response.file) return NVESResult(Url::fromFilePath(response.file->string()));
    if (expected.isFile) return NVESResult();
    if (expected.isJson) return deserializer_.deserialize(response.body.view(), expected.type);
    return deserializer_.deserializeBytes(response.body, expected.type);
}

void NVESApiClient::setHeaderValue(const std::optional<std::string>& value, const std::string& forKey) {
    const std::lock_guard lock(mutex_);
    if (value)
        setHeader(defaultHeaders_, forKey, *value);
    else
        std::erase_if(defaultHeaders_,
                      [&](const auto& header) { return asciiEqualsIgnoringCase(header.first, forKey); });
}

std::chrono::seconds NVESApiClient::timeoutInterval() const {
    const std::lock_guard lock(mutex_);
    return timeout_;
}

void NVESApiClient::setTimeoutInterval(std::chrono::seconds interval) {
    const std::lock_guard lock(mutex_);
    timeout_ = interval;
}

HttpHeaders NVESApiClient::HTTPResponseHeaders() const {
    const std::lock_guard lock(mutex_);
    return responseHeaders_;
}

NVESConfiguration& NVESApiClient::configuration() const { return NVESConfiguration::sharedConfig(); }

std::uint64_t NVESApiClient::refuseRequest(NVMError error, NVESCompletion completionBlock) {
    error.userInfo.emplace(kTransportRequestSentKey, false);
    const std::uint64_t requestId = queueRequest();
    // A request that every session refuses, for the sake of being called back on its thread.
    HttpRequest refused{"GET", *Url::parse("http://refused.invalid/")};
    refused.headers.emplace_back("Refused", "\n");
    Platform::current().http->send(
        std::move(refused),
        [requestId, error = std::move(error), completion = std::move(completionBlock)](const auto&) {
            if (executeRequestWithId(requestId) && completion) completion(NVESResult(), error);
        });
    return requestId;
}

} // namespace norvane
