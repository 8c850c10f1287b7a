#pragma once

#include <norvane/platform/Geometry.h>

#include <cstdint>
#include <optional>
#include <string>

namespace norvane {

/// The kind of a tab. Kept open: a record may carry a number that is none of these.
using NVMTabType = std::int64_t;
inline constexpr NVMTabType NVMTabTypeUnsupported = 0; ///< a tab of a kind that the kit does not support
inline constexpr NVMTabType NVMTabTypeSignHere = 1;
inline constexpr NVMTabType NVMTabTypeInitialHere = 2;
inline constexpr NVMTabType NVMTabTypeText = 3;
inline constexpr NVMTabType NVMTabTypeCheckbox = 4;
inline constexpr NVMTabType NVMTabTypeCompany = 5;
inline constexpr NVMTabType NVMTabTypeTitle = 6;
inline constexpr NVMTabType NVMTabTypeFullName = 7;
inline constexpr NVMTabType NVMTabTypeDateSigned = 8;
inline constexpr NVMTabType NVMTabTypeFormula = 9;
inline constexpr NVMTabType NVMTabTypeRadio = 10;

/// What the palettes and annotations call the kind of a tab; the same numbers.
using NVMTagType = NVMTabType;

/// The name of the kind in the user's language; nothing above 10 and below 0.
std::optional<std::string> nameForTagType(NVMTagType type);
/// The size in points of a tab that has none of its own; the sign-here size for numbers that name no kind.
Size defaultSizeForTagType(NVMTagType type);

} // namespace norvane
