#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace norvane {

/// Immutable bytes, cheap to copy: copies share one buffer. Safe to read from several threads.
class Data {
  public:
    Data() = default;
    explicit Data(std::string bytes)
        : bytes_(bytes.empty() ? nullptr : std::make_shared<const std::string>(std::move(bytes))) {}
    Data(const void* bytes, std::size_t size)
        : Data(std::string(static_cast<const char*>(bytes), size)) {}
    /// Bytes that are overwritten when the last copy goes: for passwords and tokens.
    static Data secret(std::string bytes);

    const std::uint8_t* data() const { return reinterpret_cast<const std::uint8_t*>(view().data()); }
    std::size_t size() const { return bytes_ ? bytes_->size() : 0; }
    bool empty() const { return size() == 0; }
    std::string_view view() const { return bytes_ ? std::string_view(*bytes_) : std::string_view(); }

    friend bool operator==(const Data& a, const Data& b) {
        return a.bytes_ == b.bytes_ || a.view() == b.view();
    }

  private:
    std::shared_ptr<const std::string> bytes_;
};

/// Overwrites a text that held a secret, also the room beyond its end, and empties it.
void cleanse(std::string& secret);

} // namespace norvane
