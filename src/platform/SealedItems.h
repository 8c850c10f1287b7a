#pragma once

#include "src/platform/SecretBytes.h"

#include <map>
#include <optional>
#include <string_view>
#include <utility>

namespace norvane {

/// Service and account.
using CredentialKey = std::pair<SecretBytes, SecretBytes>;
using CredentialItems = std::map<CredentialKey, SecretBytes>;

/// Bytes of the key that seals the items.
inline constexpr std::size_t kSealKeySize = 32;

/// The items as one encrypted text under a fresh nonce (XChaCha20-Poly1305). `key` has `kSealKeySize` bytes.
SecretBytes sealItems(const CredentialItems& items, const SecretBytes& key);
/// Nothing when the text was changed or sealed with another key.
std::optional<CredentialItems> openItems(std::string_view sealed, const SecretBytes& key);

} // namespace norvane
