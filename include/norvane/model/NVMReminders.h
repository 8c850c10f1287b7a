#pragma once

#include <norvane/record/Record.h>

namespace norvane {

struct NVMCDReminders;

/// When recipients are reminded, in days.
// clang-format off
#define NVM_REMINDERS_FIELDS(FIELD, R) \
    FIELD(R, Bool, reminderEnabled) FIELD(R, Number, reminderDelay) \
    FIELD(R, Number, reminderFrequency)
// clang-format on
struct NVMReminders {
    NORVANE_RECORD(NVMReminders, NVM_REMINDERS_FIELDS)

    NVMReminders() = default;
    explicit NVMReminders(const NVMCDReminders& stored);
};

} // namespace norvane
