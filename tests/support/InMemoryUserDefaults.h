#pragma once

#include <norvane/platform/UserDefaults.h>

#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace norvane {

class InMemoryUserDefaults final : public UserDefaults {
  public:
    /// Every later `setValue` fails with this error; nothing mends it.
    void breakWith(std::optional<NVMError> error);

    Value value(std::string_view suite, std::string_view key) const override;
    Failure setValue(std::string_view suite, std::string_view key, const Value& value) override;
    Dictionary all(std::string_view suite) const override;

  private:
    mutable std::mutex mutex_; ///< guards all below
    std::map<std::string, Dictionary, std::less<>> suites_;
    std::optional<NVMError> error_;
};

} // namespace norvane
