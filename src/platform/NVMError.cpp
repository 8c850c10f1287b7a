#include <norvane/platform/NVMError.h>

namespace norvane {

NVMError NVMError::make(std::string domain, std::int64_t code, std::string description,
                        std::string failureReason) {
    Dictionary information;
    information.emplace(kLocalizedDescriptionKey, std::move(description));
    if (!failureReason.empty()) information.emplace(kFailureReasonKey, std::move(failureReason));
    return {std::move(domain), code, std::move(information)};
}

std::string NVMError::localizedDescription() const {
    const auto found = userInfo.find(kLocalizedDescriptionKey);
    const std::string* text = found == userInfo.end() ? nullptr : found->second.asString();
    if (text) return *text;
    return "The operation couldn't be completed. (" + domain + " error " + std::to_string(code) + ".)";
}

std::string NVMError::failureReason() const {
    const auto found = userInfo.find(kFailureReasonKey);
    const std::string* text = found == userInfo.end() ? nullptr : found->second.asString();
    return text ? *text : std::string();
}

} // namespace norvane
