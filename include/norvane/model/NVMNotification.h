#pragma once

#include <norvane/model/NVMExpirations.h>
#include <norvane/model/NVMReminders.h>
#include <norvane/record/Record.h>

namespace norvane {

struct NVMCDNotification;

/// Reminders and expirations of an envelope.
// clang-format off
#define NVM_NOTIFICATION_FIELDS(FIELD, R) \
    FIELD(R, Bool, useAccountDefaults) FIELD(R, Record<NVMReminders>, reminders) \
    FIELD(R, Record<NVMExpirations>, expirations)
// clang-format on
struct NVMNotification {
    NORVANE_RECORD(NVMNotification, NVM_NOTIFICATION_FIELDS)

    NVMNotification() = default;
    explicit NVMNotification(const NVMCDNotification& stored);
};

} // namespace norvane
