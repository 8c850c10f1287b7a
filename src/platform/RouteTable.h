#pragma once

#include <optional>

namespace norvane {

/// Whether the kernel has a route over a network interface that is up, the loopback interface aside; routes
/// to link-local and multicast addresses only do not count. Nothing when the kernel does not tell.
std::optional<bool> hasUsableRoute();

} // namespace norvane
