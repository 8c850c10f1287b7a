#pragma once

#include <norvane/record/Record.h>

namespace norvane {

struct NVESErrorDetails;

/// What the service found wrong with one record of an envelope; kept with the envelope.
// A field list is a table, so its form is its own.
// clang-format off
#define NVM_ERROR_DETAILS_FIELDS(FIELD, R) FIELD(R, Text, errorCode) FIELD(R, Text, message)
// clang-format on
struct NVMErrorDetails {
    NORVANE_RECORD(NVMErrorDetails, NVM_ERROR_DETAILS_FIELDS)

    NVMErrorDetails() = default;
    explicit NVMErrorDetails(const NVESErrorDetails& errorDetails);
};

} // namespace norvane
