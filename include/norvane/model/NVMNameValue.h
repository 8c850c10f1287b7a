#pragma once

#include <norvane/record/Record.h>

namespace norvane {

struct NVMCDNameValue;

/// A field of a document.
// clang-format off
#define NVM_NAME_VALUE_FIELDS(FIELD, R) FIELD(R, Text, name) FIELD(R, Text, value)
// clang-format on
struct NVMNameValue {
    NORVANE_RECORD(NVMNameValue, NVM_NAME_VALUE_FIELDS)

    NVMNameValue() = default;
    explicit NVMNameValue(const NVMCDNameValue& stored);
};

} // namespace norvane
