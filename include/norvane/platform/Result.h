#pragma once

#include <norvane/platform/NVMError.h>

#include <optional>
#include <utility>
#include <variant>

namespace norvane {

/// A value or the reason why there is none.
template <class T>
class [[nodiscard]] Result {
  public:
    Result(T value)
        : storage_(std::in_place_index<0>, std::move(value)) {}
    Result(NVMError error)
        : storage_(std::in_place_index<1>, std::move(error)) {}

    explicit operator bool() const { return storage_.index() == 0; }
    bool ok() const { return storage_.index() == 0; }
    /// Undefined unless `ok()`.
    T& value() & { return *std::get_if<0>(&storage_); }
    const T& value() const& { return *std::get_if<0>(&storage_); }
    T&& value() && { return std::move(*std::get_if<0>(&storage_)); }
    T& operator*() & { return value(); }
    const T& operator*() const& { return value(); }
    T&& operator*() && { return std::move(*this).value(); }
    T* operator->() { return std::get_if<0>(&storage_); }
    const T* operator->() const { return std::get_if<0>(&storage_); }
    /// Undefined when `ok()`.
    const NVMError& error() const { return *std::get_if<1>(&storage_); }

  private:
    std::variant<T, NVMError> storage_;
};

/// Success is the absence of an error.
using Failure = std::optional<NVMError>;

} // namespace norvane
