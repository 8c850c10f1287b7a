#include "src/platform/SealedItems.h"

#include <sodium.h>

#include <cstdint>

namespace norvane {

namespace {

constexpr std::string_view kHeader = "NVCRED1\n"; ///< authenticated too, so that a version cannot be swapped
constexpr std::size_t kNonceSize = crypto_aead_xchacha20poly1305_ietf_NPUBBYTES;
constexpr std::size_t kTagSize = crypto_aead_xchacha20poly1305_ietf_ABYTES;
static_assert(kSealKeySize == crypto_aead_xchacha20poly1305_ietf_KEYBYTES);

const unsigned char* bytesOf(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

void put(SecretBytes& out, const SecretBytes& part) {
    const auto size = static_cast<std::uint32_t>(part.size());
    for (int shift = 0; shift < 32; shift += 8)
        out.push_back(static_cast<unsigned char>(size >> shift));
    out.insert(out.end(), part.begin(), part.end());
}

/// Takes one length and its bytes off the front.
bool take(const SecretBytes& in, std::size_t& at, SecretBytes& part) {
    if (in.size() - at < 4) return false;
    std::uint32_t size = 0;
    for (int i = 0; i < 4; ++i)
        size |= std::uint32_t{in[at + static_cast<std::size_t>(i)]} << (8 * i);
    at += 4;
    if (in.size() - at < size) return false;
    const auto start = in.begin() + static_cast<std::ptrdiff_t>(at);
    part.assign(start, start + static_cast<std::ptrdiff_t>(size));
    at += size;
    return true;
}

std::optional<CredentialItems> parseItems(const SecretBytes& plain) {
    CredentialItems items;
    for (std::size_t at = 0; at < plain.size();) {
        SecretBytes service, account, secret;
        if (!take(plain, at, service) || !take(plain, at, account) || !take(plain, at, secret))
            return std::nullopt;
        items.insert_or_assign({std::move(service), std::move(account)}, std::move(secret));
    }
    return items;
}

} // namespace

SecretBytes sealItems(const CredentialItems& items, const SecretBytes& key) {
    SecretBytes plain;
    for (const auto& [itemKey, secret] : items) {
        put(plain, itemKey.first);
        put(plain, itemKey.second);
        put(plain, secret);
    }
    SecretBytes sealed(kHeader.begin(), kHeader.end());
    sealed.resize(kHeader.size() + kNonceSize + plain.size() + kTagSize);
    unsigned char* nonce = sealed.data() + kHeader.size();
    randombytes_buf(nonce, kNonceSize);
    crypto_aead_xchacha20poly1305_ietf_encrypt(nonce + kNonceSize, nullptr, plain.data(), plain.size(),
                                               bytesOf(kHeader), kHeader.size(), nullptr, nonce, key.data());
    return sealed;
}

std::optional<CredentialItems> openItems(std::string_view sealed, const SecretBytes& key) {
    if (sealed.size() < kHeader.size() + kNonceSize + kTagSize || !sealed.starts_with(kHeader))
        return std::nullopt;
    const std::string_view nonce = sealed.substr(kHeader.size(), kNonceSize);
    const std::string_view encrypted = sealed.substr(kHeader.size() + kNonceSize);
    SecretBytes plain(encrypted.size() - kTagSize);
    const int result = crypto_aead_xchacha20poly1305_ietf_decrypt(
        plain.data(), nullptr, nullptr, bytesOf(encrypted), encrypted.size(), bytesOf(kHeader),
        kHeader.size(), bytesOf(nonce), key.data());
    if (result != 0) return std::nullopt;
    return parseItems(plain);
}

} // namespace norvane
