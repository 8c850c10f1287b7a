#include <norvane/sdk/NVMAPIErrorResponse.h>

namespace norvane {
namespace {

std::optional<std::string> textOf(const Dictionary& dictionary, std::string_view key) {
    const auto found = dictionary.find(key);
    return found == dictionary.end() ? std::nullopt : found->second.stringValue();
}

} // namespace

NVMAPIErrorResponse::NVMAPIErrorResponse(const Dictionary& dictionary)
    : errorCode(textOf(dictionary, "errorCode"))
    , message(textOf(dictionary, "message")) {}

std::string NVMAPIErrorResponse::description() const {
    return errorCode.value_or("(null)") + ": " + message.value_or("(null)");
}

std::optional<NVMAPIErrorResponse> NVMAPIErrorResponseOf(const NVMError& error) {
    const auto found = error.userInfo.find(kMapperErrorObjectsKey);
    const Array* objects = found == error.userInfo.end() ? nullptr : found->second.asArray();
    if (!objects || objects->empty()) return NVMAPIErrorResponse(error.domain, error.localizedDescription());
    for (const Value& object : *objects) {
        if (const auto response = object.asObject<NVMAPIErrorResponse>()) return *response;
    }
    return std::nullopt;
}

std::optional<std::string> NVMAPIErrorResponseCode(const NVMError& error) {
    const auto response = NVMAPIErrorResponseOf(error);
    return response ? response->errorCode : std::nullopt;
}

std::optional<std::string> NVMAPIErrorResponseMessage(const NVMError& error) {
    const auto response = NVMAPIErrorResponseOf(error);
    return response ? response->message : std::nullopt;
}

} // namespace norvane
