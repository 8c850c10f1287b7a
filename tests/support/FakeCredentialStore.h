#pragma once

#include <norvane/platform/CredentialStore.h>

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace norvane {

/// Keeps items in memory and can be locked or broken.
class FakeCredentialStore final : public CredentialStore {
  public:
    /// Every later call fails with this error; nothing mends it.
    void breakWith(std::optional<NVMError> error) {
        const std::lock_guard lock(mutex_);
        error_ = std::move(error);
    }
    std::size_t itemCount() const {
        const std::lock_guard lock(mutex_);
        return items_.size();
    }

    Failure save(std::string_view service, std::string_view account, const Data& secret) override {
        const std::lock_guard lock(mutex_);
        if (!error_) items_.insert_or_assign({std::string(service), std::string(account)}, secret);
        return error_;
    }
    Result<std::optional<Data>> fetch(std::string_view service, std::string_view account) override {
        const std::lock_guard lock(mutex_);
        if (error_) return *error_;
        const auto found = items_.find({std::string(service), std::string(account)});
        return found == items_.end() ? std::optional<Data>() : std::optional(found->second);
    }
    Failure remove(std::string_view service, std::string_view account) override {
        const std::lock_guard lock(mutex_);
        if (!error_) items_.erase({std::string(service), std::string(account)});
        return error_;
    }

  private:
    mutable std::mutex mutex_; ///< guards all below
    std::map<std::pair<std::string, std::string>, Data> items_;
    std::optional<NVMError> error_;
};

} // namespace norvane
