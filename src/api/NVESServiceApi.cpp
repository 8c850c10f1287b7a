#include "src/api/OfflineEnvelopeFiles.h"
#include "src/api/OperationNames.h"

#include <norvane/api/NVESConfiguration.h>
#include <norvane/api/NVESEnvelopes.h>
#include <norvane/api/NVESServiceApi.h>
#include <norvane/api/RecordJson.h>
#include <norvane/platform/NVMException.h>

#include <algorithm>

namespace norvane {
namespace {

void replaceFormat(std::string& path) {
    constexpr std::string_view kFormat = ".{format}";
    const std::size_t at = path.find(kFormat);
    if (at != std::string::npos) path.replace(at, kFormat.size(), ".json");
}

std::string withBackquotes(std::string_view text) { return "`" + std::string(text) + "`"; }

[[noreturn]] void refuseParameter(std::string_view problem, std::string_view parameter,
                                  const NVESOperation& operation) {
    throw NVMException("Invalid parameter", std::string(problem) + " " + withBackquotes(parameter) +
                                                " when calling " + withBackquotes(operation.name));
}

[[noreturn]] void refuseMissing(std::string_view parameter, const NVESOperation& operation) {
    refuseParameter("Missing the required parameter", parameter, operation);
}

/// The options that the parameters name; null when the operation takes none.
std::shared_ptr<void> optionsFrom(const NVESOperation& operation, const NVESOperationArguments& arguments) {
    const std::shared_ptr<void> options = operation.options ? operation.options().make() : nullptr;
    const auto required = operation.requiredParameters();
    for (const auto& [name, value] : arguments.parameters) {
        if (std::find(required.begin(), required.end(), name) != required.end()) continue;
        const Field* option = operation.options ? optionNamed(operation.options(), name) : nullptr;
        if (!option) refuseParameter("Unknown parameter", name, operation);
        option->as<field::Text>(options.get()) = value;
    }
    return options;
}

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
    const auto names = operation.requiredParameters();
    for (std::size_t index = 0; index < names.size(); ++index) {
        const Text* value = index < arguments.path.size() ? arguments.path[index] : nullptr;
        if (!value || !*value) refuseMissing(names[index], operation);
        request.pathParams.emplace(names[index], **value);
    }
    if (arguments.options)
        for (const Field& field : operation.options().fields())
            if (hasValue(field, arguments.options))
                request.queryParams.emplace(queryName(field.name), valueOf(field, arguments.options));

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

std::uint64_t NVESServiceApi::performOfflineUpload(const Operation& operation, const Text& accountId,
                                                   NVESEnvelopeDefinition& definition,
                                                   NVESCompletion completion) const {
    NVESRequest request = makeRequest(operation, {{&accountId}});
    request.files = takeOfflineEnvelopeFiles(definition);
    // The service knows the part by this name.
    request.formParams.emplace("(null)", writeRecord(definition));
    return apiClient()->envelopeCreateWithCompletionBlock(request, std::move(completion));
}

std::uint64_t NVESServiceApi::callOperation(const NVESOperation& operation,
                                            const NVESOperationArguments& arguments,
                                            NVESCompletion completion) const {
    std::vector<Text> values;
    for (const std::string_view name : operation.requiredParameters()) {
        const auto found = arguments.parameters.find(name);
        values.push_back(found == arguments.parameters.end() ? Text() : Text(found->second));
    }
    const std::shared_ptr<void> options = optionsFrom(operation, arguments);
    Arguments given{.path = {}, .options = options.get()};
    for (const Text& value : values)
        given.path.push_back(&value);
    if (operation.body.empty()) return perform(operation, given, std::move(completion));

    NVESRequest request = makeRequest(operation, given);
    if (arguments.body.empty()) refuseMissing("body", operation);
    if (operation.body == "NSData")
        return apiClient()->imageWithCompletionBlock(request, arguments.body, std::move(completion));
    if (operation.contentType == "multipart/form-data") {
        const auto definition = readRecord<NVESEnvelopeDefinition>(arguments.body.view());
        if (!definition) return NVESApiClient::refuseRequest(definition.error(), std::move(completion));
        (*definition)->DisableResponsiveDocument = "true";
        setDocumentFiles(**definition, arguments.documents);
        return performOfflineUpload(operation, values.front(), **definition, std::move(completion));
    }
    request.body = std::string(arguments.body.view());
    return apiClient()->requestWithPath(request, std::move(completion));
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
