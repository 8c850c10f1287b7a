#pragma once

#include <optional>
#include <string_view>

#include <norvane/platform/Data.h>
#include <norvane/platform/Result.h>

namespace norvane {

/// Generic password items, each under a service name and an account. Any thread may call; calls block.
/// Secrets never reach a log or an error text.
class CredentialStore {
  public:
    virtual ~CredentialStore() = default;
    /// Adds the item or replaces it. After an error the earlier item, if any, is still there.
    virtual Failure save(std::string_view service, std::string_view account, const Data& secret) = 0;
    /// The item's bytes; nothing when there is no such item; an error when the store cannot be read
    /// (locked, broken, gone).
    virtual Result<std::optional<Data>> fetch(std::string_view service, std::string_view account) = 0;
    /// Removes the item; one that is not there is no error.
    virtual Failure remove(std::string_view service, std::string_view account) = 0;
};

} // namespace norvane
