#pragma once

#include <norvane/model/NVMListCustomField.h>
#include <norvane/model/NVMTextCustomField.h>
#include <norvane/record/Record.h>

namespace norvane {

struct NVESCustomFields;
struct NVMCDCustomFields;

/// The custom fields of an envelope. Both lists are sets: their order means nothing.
// clang-format off
#define NVM_CUSTOM_FIELDS_FIELDS(FIELD, R) \
    FIELD(R, List<NVMTextCustomField>, textCustomFields) \
    FIELD(R, List<NVMListCustomField>, listCustomFields)
// clang-format on
struct NVMCustomFields {
    NORVANE_RECORD(NVMCustomFields, NVM_CUSTOM_FIELDS_FIELDS)

    NVMCustomFields() = default;
    explicit NVMCustomFields(const NVMCDCustomFields& stored);
    explicit NVMCustomFields(const NVESCustomFields& wire);
};

} // namespace norvane
