#pragma once

#include <norvane/record/Record.h>

namespace norvane {

struct NVESListCustomField;
struct NVMCDListCustomField;

/// A custom field with a choice of values.
// clang-format off
#define NVM_LIST_CUSTOM_FIELD_FIELDS(FIELD, R) \
    FIELD(R, Text, fieldId) FIELD(R, Text, name) FIELD(R, Text, value) \
    FIELD(R, Text, configurationType) FIELD(R, Bool, show) FIELD(R, Bool, required) \
    FIELD(R, TextList, listItems)
// clang-format on
struct NVMListCustomField {
    NORVANE_RECORD(NVMListCustomField, NVM_LIST_CUSTOM_FIELD_FIELDS)

    NVMListCustomField() = default;
    explicit NVMListCustomField(const NVMCDListCustomField& stored);
    explicit NVMListCustomField(const NVESListCustomField& wire);
};

} // namespace norvane
