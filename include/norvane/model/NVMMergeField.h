#pragma once

#include <norvane/record/Record.h>

namespace norvane {

struct NVMCDMergeField;

/// The record field behind a tab.
// clang-format off
#define NVM_MERGE_FIELD_FIELDS(FIELD, R) \
    FIELD(R, Text, configurationType) FIELD(R, Text, path) FIELD(R, Number, row) \
    FIELD(R, Bool, writeBack) FIELD(R, Bool, allowSenderToEdit)
// clang-format on
struct NVMMergeField {
    NORVANE_RECORD(NVMMergeField, NVM_MERGE_FIELD_FIELDS)

    NVMMergeField() = default;
    explicit NVMMergeField(const NVMCDMergeField& stored);
};

} // namespace norvane
