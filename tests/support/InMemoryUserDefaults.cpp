#include "tests/support/InMemoryUserDefaults.h"

#include "src/platform/SuiteCoding.h"

namespace norvane {

void InMemoryUserDefaults::breakWith(std::optional<NVMError> error) {
    const std::lock_guard lock(mutex_);
    error_ = std::move(error);
}

Value InMemoryUserDefaults::value(std::string_view suite, std::string_view key) const {
    const Dictionary content = all(suite);
    const auto found = content.find(key);
    return found == content.end() ? Value() : found->second;
}

Failure InMemoryUserDefaults::setValue(std::string_view suite, std::string_view key, const Value& value) {
    const std::lock_guard lock(mutex_);
    if (error_) return error_;
    Dictionary& content = suites_[std::string(suite)];
    if (value.isNull()) {
        content.erase(std::string(key));
        return std::nullopt;
    }
    if (decodeSuite(encodeSuite({{std::string(key), value}})) != Dictionary{{std::string(key), value}}) {
        return NVMError::make("InMemoryUserDefaults", 0, "This value cannot be kept as a setting.");
    }
    content.insert_or_assign(std::string(key), value);
    return std::nullopt;
}

Dictionary InMemoryUserDefaults::all(std::string_view suite) const {
    const std::lock_guard lock(mutex_);
    const auto found = suites_.find(suite);
    return found == suites_.end() ? Dictionary() : found->second;
}

} // namespace norvane
