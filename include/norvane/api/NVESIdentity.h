#pragma once

#include <string_view>

namespace norvane {

/// How the kit names itself, to the service and to the host.
inline constexpr std::string_view kKitName = "Norvane-Native-iOS-SDK";
inline constexpr std::string_view kKitBuildVersion = "2.1.5";
/// The flavour of this client, sent in the header "NorvaneSDK".
inline constexpr std::string_view kKitFlavour = "Native";

} // namespace norvane
