#include "src/platform/Adapters.h"

#include <map>
#include <mutex>

namespace norvane {
namespace {

class MemoryUserDefaults final : public UserDefaults {
  public:
    Value value(std::string_view suite, std::string_view key) const override {
        const std::lock_guard lock(mutex_);
        const auto found = suites_.find(suite);
        if (found == suites_.end()) return {};
        const auto entry = found->second.find(key);
        return entry == found->second.end() ? Value() : entry->second;
    }
    Failure setValue(std::string_view suite, std::string_view key, const Value& value) override {
        const std::lock_guard lock(mutex_);
        Dictionary& content = suites_[std::string(suite)];
        if (value.isNull())
            content.erase(std::string(key));
        else
            content.insert_or_assign(std::string(key), value);
        return std::nullopt;
    }
    Dictionary all(std::string_view suite) const override {
        const std::lock_guard lock(mutex_);
        const auto found = suites_.find(suite);
        return found == suites_.end() ? Dictionary() : found->second;
    }

  private:
    mutable std::mutex mutex_; ///< guards suites_
    std::map<std::string, Dictionary, std::less<>> suites_;
};

class MemoryCredentialStore final : public CredentialStore {
  public:
    Failure save(std::string_view service, std::string_view account, const Data& secret) override {
        const std::lock_guard lock(mutex_);
        items_.insert_or_assign({std::string(service), std::string(account)}, secret);
        return std::nullopt;
    }
    Result<std::optional<Data>> fetch(std::string_view service, std::string_view account) override {
        const std::lock_guard lock(mutex_);
        const auto found = items_.find({std::string(service), std::string(account)});
        return found == items_.end() ? std::optional<Data>() : std::optional(found->second);
    }
    Failure remove(std::string_view service, std::string_view account) override {
        const std::lock_guard lock(mutex_);
        items_.erase({std::string(service), std::string(account)});
        return std::nullopt;
    }

  private:
    std::mutex mutex_; ///< guards items_
    std::map<std::pair<std::string, std::string>, Data> items_;
};

} // namespace

std::shared_ptr<UserDefaults> makeMemoryUserDefaults() { return std::make_shared<MemoryUserDefaults>(); }

std::shared_ptr<CredentialStore> makeMemoryCredentialStore() {
    return std::make_shared<MemoryCredentialStore>();
}

} // namespace norvane
