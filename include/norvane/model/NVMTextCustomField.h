#pragma once

#include <norvane/record/Record.h>

namespace norvane {

struct NVESTextCustomField;
struct NVMCDTextCustomField;

/// A custom field of free text.
// clang-format off
#define NVM_TEXT_CUSTOM_FIELD_FIELDS(FIELD, R) \
    FIELD(R, Text, fieldId) FIELD(R, Text, name) FIELD(R, Text, value) \
    FIELD(R, Text, configurationType) FIELD(R, Bool, show) FIELD(R, Bool, required)
// clang-format on
struct NVMTextCustomField {
    NORVANE_RECORD(NVMTextCustomField, NVM_TEXT_CUSTOM_FIELD_FIELDS)

    NVMTextCustomField() = default;
    explicit NVMTextCustomField(const NVMCDTextCustomField& stored);
    explicit NVMTextCustomField(const NVESTextCustomField& wire);
};

} // namespace norvane
