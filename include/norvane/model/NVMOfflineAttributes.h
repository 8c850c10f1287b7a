#pragma once

#include <norvane/record/Record.h>

namespace norvane {

struct NVMCDOfflineAttributes;

/// Facts recorded when a recipient signs on this device; sent with the upload. Degrees, north and east
/// positive.
// clang-format off
#define NVM_OFFLINE_ATTRIBUTES_FIELDS(FIELD, R) \
    FIELD(R, Text, accountEsignId) FIELD(R, Text, deviceModel) FIELD(R, Text, deviceName) \
    FIELD(R, Text, offlineSigningHash) FIELD(R, Text, consumerDisclosureId) \
    FIELD(R, Number, gpsLatitude) FIELD(R, Number, gpsLongitude)
// clang-format on
struct NVMOfflineAttributes {
    NORVANE_RECORD(NVMOfflineAttributes, NVM_OFFLINE_ATTRIBUTES_FIELDS)

    NVMOfflineAttributes() = default;
    explicit NVMOfflineAttributes(const NVMCDOfflineAttributes& stored);
};

} // namespace norvane
