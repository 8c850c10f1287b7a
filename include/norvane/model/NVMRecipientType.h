#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace norvane {

/// The kind of a recipient. Kept open: a record may carry a number that is none of these.
using NVMRecipientType = std::int64_t;
inline constexpr NVMRecipientType NVMRecipientTypeNotSet = 0;
inline constexpr NVMRecipientType NVMRecipientTypeAgent = 1;
inline constexpr NVMRecipientType NVMRecipientTypeCarbonCopy = 2;
inline constexpr NVMRecipientType NVMRecipientTypeCertifiedDelivery = 3;
inline constexpr NVMRecipientType NVMRecipientTypeEditor = 4;
inline constexpr NVMRecipientType NVMRecipientTypeIntermediary = 5;
inline constexpr NVMRecipientType NVMRecipientTypeInPersonSigner = 6;
inline constexpr NVMRecipientType NVMRecipientTypeSigner = 7;

/// What the kind is called in the user's language; nothing for other numbers.
std::optional<std::string> localizedTextForRecipientType(NVMRecipientType type);

} // namespace norvane
