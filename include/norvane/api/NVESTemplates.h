#pragma once

#include <norvane/api/NVESAccounts.h>
#include <norvane/api/NVESEnvelopes.h>
#include <norvane/api/NVESObject.h>
#include <norvane/api/NVESRecipients.h>

// Templates as the service lists and hands them out.
// A field list is a table, so its form is its own.
// clang-format off
namespace norvane {

struct NVESCustomFields;
struct NVESDocument;
struct NVESEnvelopeTemplateDefinition;
struct NVESEnvelopeTemplateResult;
struct NVESFolder;
struct NVESRecipients;
struct NVESUserInfo;

#define NVES_ENVELOPE_TEMPLATE_DEFINITION_FIELDS(FIELD, R) \
    FIELD(R, Text, templateId) FIELD(R, Text, name) FIELD(R, Text, shared) FIELD(R, Text, password) \
    FIELD(R, Text, varNewPassword) FIELD(R, Text, _description) FIELD(R, Text, lastModified) \
    FIELD(R, Record<NVESUserInfo>, lastModifiedBy) FIELD(R, Number, pageCount) FIELD(R, Text, uri) \
    FIELD(R, Text, folderName) FIELD(R, Text, folderId) FIELD(R, Text, folderUri) \
    FIELD(R, Text, parentFolderUri) FIELD(R, Record<NVESUserInfo>, owner)
struct NVESEnvelopeTemplateDefinition : NVESObject {
    NORVANE_RECORD(NVESEnvelopeTemplateDefinition, NVES_ENVELOPE_TEMPLATE_DEFINITION_FIELDS)
};

#define NVES_ENVELOPE_TEMPLATE_FIELDS(FIELD, R) \
    FIELD(R, Record<NVESEnvelopeTemplateDefinition>, envelopeTemplateDefinition) \
    FIELD(R, List<NVESDocument>, documents) FIELD(R, Record<NVESRecipients>, recipients) \
    FIELD(R, Record<NVESCustomFields>, customFields) NVES_ENVELOPE_STATE_FIELDS(FIELD, R) \
    FIELD(R, Text, autoNavigation) FIELD(R, Text, brandLock) FIELD(R, Text, brandId) \
    FIELD(R, Text, isSignatureProviderEnvelope)
struct NVESEnvelopeTemplate : NVESObject {
    NORVANE_RECORD(NVESEnvelopeTemplate, NVES_ENVELOPE_TEMPLATE_FIELDS)
};

#define NVES_ENVELOPE_TEMPLATE_RESULT_FIELDS(FIELD, R) \
    FIELD(R, Text, templateId) FIELD(R, Text, name) FIELD(R, Text, shared) FIELD(R, Text, password) \
    FIELD(R, Text, _description) FIELD(R, Text, lastModified) FIELD(R, Number, pageCount) \
    FIELD(R, Text, uri) FIELD(R, Text, folderName) FIELD(R, Text, folderId) FIELD(R, Text, folderUri) \
    FIELD(R, Text, parentFolderUri) FIELD(R, Record<NVESUserInfo>, owner) \
    FIELD(R, List<NVESDocument>, documents) FIELD(R, Record<NVESRecipients>, recipients) \
    NVES_ENVELOPE_STATE_FIELDS(FIELD, R)
struct NVESEnvelopeTemplateResult : NVESObject {
    NORVANE_RECORD(NVESEnvelopeTemplateResult, NVES_ENVELOPE_TEMPLATE_RESULT_FIELDS)
};

#define NVES_ENVELOPE_TEMPLATE_RESULTS_FIELDS(FIELD, R) \
    FIELD(R, List<NVESEnvelopeTemplateResult>, envelopeTemplates) FIELD(R, Text, resultSetSize) \
    FIELD(R, Text, startPosition) FIELD(R, Text, endPosition) FIELD(R, Text, totalSetSize) \
    FIELD(R, Text, nextUri) FIELD(R, Text, previousUri) FIELD(R, List<NVESFolder>, folders)
struct NVESEnvelopeTemplateResults : NVESObject {
    NORVANE_RECORD(NVESEnvelopeTemplateResults, NVES_ENVELOPE_TEMPLATE_RESULTS_FIELDS)
};

} // namespace norvane
// clang-format on
