#pragma once

#include <cstdint>
#include <string>

namespace norvane {

/// Where a recipient signs.
using NVMSigningMode = std::uint64_t;
inline constexpr NVMSigningMode NVMSigningModeOnline = 0;  ///< on the service's page
inline constexpr NVMSigningMode NVMSigningModeOffline = 1; ///< on the device, uploaded later

/// "offline" for exactly 1, "online" for every other value.
inline std::string nvm_stringWithSigningMode(NVMSigningMode mode) {
    return mode == NVMSigningModeOffline ? "offline" : "online";
}

} // namespace norvane
