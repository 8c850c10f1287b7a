#pragma once

#include <norvane/record/Record.h>
#include <norvane/sdk/NVMUserInfo.h>

namespace norvane {

struct NVESEnvelopeTemplateResult;
struct NVMCDEnvelopeTemplateDefinition;

/// A template's catalogue data. `varNewPassword` is the new password when one is changed.
// clang-format off
#define NVM_ENVELOPE_TEMPLATE_DEFINITION_FIELDS(FIELD, R) \
    FIELD(R, Text, templateId) FIELD(R, Text, name) FIELD(R, Text, password) \
    FIELD(R, Text, varNewPassword) FIELD(R, Text, templateDescription) FIELD(R, Text, uri) \
    FIELD(R, Text, folderName) FIELD(R, Text, folderId) FIELD(R, Text, folderUri) \
    FIELD(R, Text, parentFolderUri) FIELD(R, Bool, shared) FIELD(R, Date, lastModified) \
    FIELD(R, Number, pageCount) FIELD(R, Record<NVMUserInfo>, lastModifiedBy) \
    FIELD(R, Record<NVMUserInfo>, owner)
// clang-format on
struct NVMEnvelopeTemplateDefinition {
    NORVANE_RECORD(NVMEnvelopeTemplateDefinition, NVM_ENVELOPE_TEMPLATE_DEFINITION_FIELDS)

    NVMEnvelopeTemplateDefinition() = default;
    explicit NVMEnvelopeTemplateDefinition(const NVMCDEnvelopeTemplateDefinition& stored);
    explicit NVMEnvelopeTemplateDefinition(const NVESEnvelopeTemplateResult& wire);
};

} // namespace norvane
