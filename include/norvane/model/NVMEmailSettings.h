#pragma once

#include <norvane/model/NVMBCCEmailAddress.h>
#include <norvane/record/Record.h>

namespace norvane {

struct NVMCDEmailSettings;

/// Reply address and blind copies. The list is a set: its order means nothing.
// clang-format off
#define NVM_EMAIL_SETTINGS_FIELDS(FIELD, R) \
    FIELD(R, Text, replyEmailAddressOverride) FIELD(R, Text, replyEmailNameOverride) \
    FIELD(R, List<NVMBCCEmailAddress>, bccEmailAddresses)
// clang-format on
struct NVMEmailSettings {
    NORVANE_RECORD(NVMEmailSettings, NVM_EMAIL_SETTINGS_FIELDS)

    NVMEmailSettings() = default;
    explicit NVMEmailSettings(const NVMCDEmailSettings& stored);
};

} // namespace norvane
