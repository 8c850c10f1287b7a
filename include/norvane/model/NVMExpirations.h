#pragma once

#include <norvane/record/Record.h>

namespace norvane {

struct NVMCDExpirations;

/// When an envelope expires, in days.
// clang-format off
#define NVM_EXPIRATIONS_FIELDS(FIELD, R) \
    FIELD(R, Bool, expireEnabled) FIELD(R, Number, expireAfter) FIELD(R, Number, expireWarn)
// clang-format on
struct NVMExpirations {
    NORVANE_RECORD(NVMExpirations, NVM_EXPIRATIONS_FIELDS)

    NVMExpirations() = default;
    explicit NVMExpirations(const NVMCDExpirations& stored);
};

} // namespace norvane
