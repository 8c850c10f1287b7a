#include "src/api/Operation.h"

#include <norvane/api/NVESConfiguration.h>
#include <norvane/api/NVESServiceApi.h>
#include <norvane/platform/NVMException.h>

namespace norvane {
namespace {

/// The names in braces, in their order.
std::vector<std::string> placeholders(std::string_view path) {
    std::vector<std::string> names;
    for (std::size_t open = path.find('{'); open != std::string_view::npos; open = path.find('{', open)) {
        const std::size_t close = path.find('}', open);
        names.emplace_back(path.substr(open + 1, close - open - 1));
        open = close;
    }
    return names;
}

/// "includeAccountIdGuid" as "include_account_id_guid".
std::string snakeCase(std::string_view name) {
    std::string result;
    for (const char c : name) {
        if (c >= 'A' && c <= 'Z')
            result.append({'_', static_cast<char>(c - 'A' + 'a')});
        else
            result += c;
    }
    return result;
}

void replaceFormat(std::string& path) {
    constexpr std::string_view kFormat = ".{format}";
    const std::size_t at = path.find(kFormat);
    if (at != std::string::npos) path.replace(at, kFormat.size(), ".json");
}

std::string withBackquotes(std::string_view text) { return "`" + std::string(text) + "`"; }

} // namespace

NVESServiceApi::NVESServiceApi(std::shared_ptr<NVESApiClient> apiClient)
    : apiClient_(apiClient ? std::move(apiClient) : NVESConfiguration::sharedConfig().apiClient()) {}

void NVESServiceApi::addHeader(const std::string& value, const std::string& forKey) {
    defaultHeaders_.insert_or_assign(forKey, value);
}

NVESRequest NVESServiceApi::makeRequest(const Operation& operation, const Arguments& arguments) const {
    NVESRequest request;
    request.path = operation.path;
    replaceFormat(request.path);
    const auto names = placeholders(request.path);
    for (std::size_t index = 0; index < names.size(); ++index) {
        const Text* value = index < arguments.path.size() ? arguments.path[index] : nullptr;
        if (!value || !*value)
            throw NVMException("Invalid parameter", "Missing the required parameter " +
                                                        withBackquotes(names[index]) + " when calling " +
                                                        withBackquotes(operation.name));
        request.pathParams.emplace(names[index], **value);
    }
    if (arguments.options)
        for (const Field& field : arguments.optionsType->fields())
            if (hasValue(field, arguments.options))
                request.queryParams.emplace(snakeCase(field.name), valueOf(field, arguments.options));

    const NVESSanitizer& sanitizer = apiClient_->sanitizer();
    const std::string accept = sanitizer.selectHeaderAccept({"application/json"});
    request.headerParams = defaultHeaders_;
    if (accept.empty())
        request.headerParams.erase("Accept");
    else
        request.headerParams.insert_or_assign("Accept", accept);
    request.responseContentType = accept.substr(0, accept.find(", "));
    std::vector<std::string> contentTypes;
    if (!operation.contentType.empty()) contentTypes.emplace_back(operation.contentType);
    request.requestContentType = sanitizer.selectHeaderContentType(contentTypes);
    request.method = operation.method;
    request.responseType = operation.result;
    if (!arguments.body.empty()) request.body = arguments.body;
    return request;
}

std::uint64_t NVESServiceApi::perform(const Operation& operation, const Arguments& arguments,
                                      NVESCompletion completion) const {
    const NVESRequest request = makeRequest(operation, arguments);
    return apiClient_->requestWithPath(request, std::move(completion));
}

NVESCompletion NVESServiceApi::untyped(NVESValueCompletion handler) {
    return [handler = std::move(handler)](const NVESResult& result, const std::optional<NVMError>& error) {
        if (handler) handler(result.value(), error);
    };
}

NVESCompletion NVESServiceApi::asFile(NVESFileCompletion handler) {
    return [handler = std::move(handler)](const NVESResult& result, const std::optional<NVMError>& error) {
        if (handler) handler(result.file(), error);
    };
}

} // namespace norvane
