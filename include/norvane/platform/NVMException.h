#pragma once

#include <stdexcept>
#include <string>

namespace norvane {

/// A programming error: a missing required parameter, an operation that a subclass must override. Expected
/// failures are never thrown; they are `NVMError` values. `what()` is the reason.
class NVMException : public std::runtime_error {
  public:
    NVMException(std::string name, const std::string& reason)
        : std::runtime_error(reason)
        , name_(std::move(name)) {}

    const std::string& name() const { return name_; }
    std::string reason() const { return what(); }

  private:
    std::string name_;
};

} // namespace norvane
