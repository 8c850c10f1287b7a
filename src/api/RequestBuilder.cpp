#include "src/api/RequestBuilder.h"

#include "src/api/MimeTypes.h"
#include "src/api/MultipartBody.h"
#include "src/platform/AsciiText.h"

#include <norvane/api/NVESApiClient.h>
#include <norvane/api/NVESConfiguration.h>
#include <norvane/api/NVESErrors.h>
#include <norvane/api/NVESIdentity.h>
#include <norvane/api/NVESLogger.h>
#include <norvane/api/NVESQueryParamCollection.h>
#include <norvane/platform/Json.h>
#include <norvane/platform/Platform.h>

#include <algorithm>

namespace norvane {
namespace {

constexpr std::string_view kJsonType = "application/json";
constexpr std::string_view kFormType = "application/x-www-form-urlencoded";
constexpr std::string_view kMethod = "requestWithPath";

/// Identifiers stay one segment of the path: whatever else they hold is escaped, but these cannot be.
bool isSegment(std::string_view text) {
    return !text.empty() && text != "." && text != ".." &&
           std::none_of(text.begin(), text.end(), isAsciiControl);
}

std::string joined(const NVESQueryParamCollection& collection) {
    const std::string_view separator = collection.format == "tsv"     ? "\t"
                                       : collection.format == "pipes" ? "|"
                                                                      : ",";
    std::string text;
    for (const std::string& value : collection.values) {
        if (&value != &collection.values.front()) text += separator;
        text += percentEscaped(value);
    }
    return text;
}

Value traceOf(std::string_view text) {
    const std::string shown = NVESLogger::redactedBody(text);
    auto json = parseJson(shown);
    return json ? *std::move(json) : Value(shown);
}

Failure addEntry(MultipartBody& body, const NVESFileEntry& entry) {
    if (entry.kind == NVESFileEntry::Kind::TabImage)
        return body.addPart({{"tabId", entry.identifier}}, "image/png", entry.bytes);
    const std::string extension = entry.file.extension().string();
    return body.addFile(
        {{"name", entry.key}, {"filename", entry.file.filename().string()}, {"documentId", entry.identifier}},
        mimeTypeForExtension(std::string_view(extension).substr(extension.empty() ? 0 : 1)), entry.file);
}

} // namespace

void setHeader(HttpHeaders& headers, std::string_view name, std::string value) {
    for (auto& [key, present] : headers) {
        if (!asciiEqualsIgnoringCase(key, name)) continue;
        present = std::move(value);
        return;
    }
    headers.emplace_back(name, std::move(value));
}

Result<RequestBuilder::Built> RequestBuilder::build(HttpHeaders defaultHeaders, const Data* image,
                                                    bool jsonForm) {
    built_.request.headers = std::move(defaultHeaders);
    sanitizeParameters();
    applyAuthSettings();
    if (auto error = resolve()) return *error;
    if (auto error = addBody(image, jsonForm)) return *error;
    chooseCachePolicy();
    addHeaders();
    return std::move(built_);
}

void RequestBuilder::sanitizeParameters() {
    for (const auto& [key, value] : request_.queryParams) {
        const bool isCollection = value.asObject<NVESQueryParamCollection>() != nullptr;
        query_.emplace(key, isCollection ? value : Value(sanitizer_.parameterToString(value)));
    }
    for (const auto& [key, value] : request_.headerParams)
        headers_.emplace(key, sanitizer_.parameterToString(value));
    for (const auto& [key, value] : request_.formParams)
        form_.emplace(key, sanitizer_.parameterToString(value));
}

void RequestBuilder::applyAuthSettings() {
    const Dictionary& settings = NVESConfiguration::sharedConfig().authSettings;
    for (const std::string& name : request_.authSettings) {
        const auto setting = settings.find(name);
        if (setting == settings.end()) continue;
        const auto key = setting->second["key"].stringValue();
        const auto value = setting->second["value"].stringValue();
        if (!key || !value || value->empty()) continue;
        const Value& place = setting->second["in"];
        if (place == Value("header")) headers_.insert_or_assign(*key, *value);
        if (place == Value("query")) query_.insert_or_assign(*key, *value);
    }
}

Failure RequestBuilder::resolve() {
    std::string path = request_.path;
    if (auto error = fillPath(path)) return error;
    addQuery(path);
    if (path.starts_with('/')) path.erase(0, 1);
    built_.request.url = built_.request.url.appending(path);
    return std::nullopt;
}

Failure RequestBuilder::fillPath(std::string& path) const {
    for (const auto& [name, value] : request_.pathParams) {
        const std::string text = sanitizer_.parameterToString(value);
        if (!isSegment(text))
            return NVMError::make(std::string(kRequestErrorDomain), 0,
                                  "The value of " + name + " cannot stand in an address.",
                                  std::string(kInvalidPathParameterReason));
        const std::string placeholder = "{" + name + "}";
        const std::size_t at = path.find(placeholder);
        if (at != std::string::npos) path.replace(at, placeholder.size(), percentEscaped(text));
    }
    return std::nullopt;
}

void RequestBuilder::addQuery(std::string& path) const {
    char separator = '?';
    const auto add = [&](std::string_view key, std::string_view escapedValue) {
        path += separator;
        path += percentEscaped(key);
        path += '=';
        path += escapedValue;
        separator = '&';
    };
    for (const auto& [key, value] : query_) {
        const auto collection = value.asObject<NVESQueryParamCollection>();
        if (!collection)
            add(key, percentEscaped(*value.asString()));
        else if (collection->format != "multi")
            add(key, joined(*collection));
        else
            for (const std::string& element : collection->values)
                add(key, percentEscaped(element));
    }
}

Failure RequestBuilder::addBody(const Data* image, bool jsonForm) {
    if (image) {
        setBody(std::string(image->view()), request_.requestContentType);
        return std::nullopt;
    }
    if (jsonForm || !request_.files.empty()) return addMultipart(jsonForm);
    if (!form_.empty())
        addParameters(form_);
    else if (const Data* bytes = request_.body.asData())
        setBody(std::string(bytes->view()), request_.requestContentType);
    else if (!request_.body.isNull())
        addParameters(sanitizer_.sanitizeForSerialization(request_.body));
    return std::nullopt;
}

/// A list or dictionary in the form that the request's content type asks for, anything else as its text.
void RequestBuilder::addParameters(const Value& body) {
    const bool isJson = request_.requestContentType == kJsonType;
    const Dictionary* dictionary = body.asDictionary();
    if (!dictionary && !body.isArray()) {
        setBody(body.stringValue().value_or(""), request_.requestContentType);
    } else if (isJson || !dictionary) {
        setBody(writeJson(body), kJsonType);
    } else {
        std::string text;
        for (const auto& [key, value] : *dictionary) {
            if (!text.empty()) text += '&';
            text += percentEscaped(key) + "=" + percentEscaped(sanitizer_.parameterToString(value));
        }
        setBody(std::move(text), kFormType);
    }
}

void RequestBuilder::setBody(std::string text, std::string_view contentType) {
    if (!contentType.empty()) setHeader(built_.request.headers, "Content-Type", std::string(contentType));
    if (NVESLogger::sharedLogger().isEnabled()) built_.trace = NVESLogger::redactedBody(text);
    built_.request.body = HttpBody::fromData(Data(std::move(text)));
}

Failure RequestBuilder::addMultipart(bool jsonForm) {
    auto body = std::make_shared<MultipartBody>("Boundary-" + Platform::current().random->uuidString());
    Dictionary trace;
    for (const auto& [key, value] : form_) {
        const std::string& text = *value.asString();
        if (auto error = body->addPart({{"name", key}}, jsonForm ? kJsonType : "", Data(text))) return error;
        if (NVESLogger::sharedLogger().isEnabled()) trace.emplace(key, traceOf(text));
    }
    for (const auto kind : {NVESFileEntry::Kind::Document, NVESFileEntry::Kind::TabImage}) {
        for (const NVESFileEntry& entry : request_.files) {
            if (entry.kind != kind) continue;
            const std::uint64_t before = body->size();
            if (auto error = addEntry(*body, entry)) return error;
            trace.emplace(entry.key, "-" + std::to_string(body->size() - before) + " bytes-");
        }
    }
    body->finish();
    built_.request.method = "POST";
    setHeader(built_.request.headers, "Content-Type", body->contentType());
    built_.request.body = std::move(body);
    if (NVESLogger::sharedLogger().isEnabled()) built_.trace = writeJson(trace);
    return std::nullopt;
}

/// Without a network the cache is left alone too, whatever the log line says: deliberate.
void RequestBuilder::chooseCachePolicy() {
    const bool offline = NVESApiClient::getOfflineState();
    built_.request.usesCache =
        !offline && headers_.empty() && built_.request.method == "GET" && NVESApiClient::getCacheEnabled();
    const std::string_view said = built_.request.usesCache ? " cache enabled"
                                  : offline                ? " cache forced"
                                                           : " cache disabled";
    NVESLogger::sharedLogger().debugLog(kMethod, request_.path + std::string(said));
}

void RequestBuilder::addHeaders() {
    HttpHeaders& headers = built_.request.headers;
    for (const auto& [name, value] : headers_)
        setHeader(headers, name, *value.asString());
    setHeader(headers, "NorvaneSDK", std::string(kKitFlavour));
    setHeader(headers, kKitName, std::string(kKitBuildVersion));
    if (!request_.responseContentType.empty()) setHeader(headers, "Accept", request_.responseContentType);
}

} // namespace norvane
