#pragma once

#include <norvane/platform/Data.h>
#include <norvane/platform/Result.h>

#include <cstdint>
#include <optional>
#include <string_view>

namespace norvane {

/// Domain of the stores' errors; the code is a `CredentialStoreError`. `kFailureReasonKey` holds the cause.
inline constexpr std::string_view kCredentialStoreErrorDomain = "NorvaneCredentialStoreErrorDomain";

enum class CredentialStoreError : std::int64_t {
    Locked = 1,      ///< the user has to unlock it first
    Unavailable = 2, ///< the service that keeps it does not answer
    Damaged = 3,     ///< it cannot be decrypted; it stays as it is
    Failed = 4,      ///< anything else: no space, no permission
};

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
