#pragma once

#include <norvane/api/NVESObject.h>

// Optional query parameters of the service operations. Each field travels under its name in snake case
// ("includeAccountIdGuid" as "include_account_id_guid"); absent ones are not sent.
// A field list is a table, so its form is its own.
// clang-format off
namespace norvane {

#define NVES_LOGIN_OPTIONS_FIELDS(FIELD, R)                                                                  \
    FIELD(R, Text, apiPassword) FIELD(R, Text, includeAccountIdGuid) FIELD(R, Text, loginSettings)
struct NVESAuthenticationApi_LoginOptions : NVESObject {
    NORVANE_RECORD(NVESAuthenticationApi_LoginOptions, NVES_LOGIN_OPTIONS_FIELDS)
};

#define NVES_GET_ACCOUNT_INFORMATION_OPTIONS_FIELDS(FIELD, R) FIELD(R, Text, includeAccountSettings)
struct NVESAccountsApi_GetAccountInformationOptions : NVESObject {
    NORVANE_RECORD(NVESAccountsApi_GetAccountInformationOptions, NVES_GET_ACCOUNT_INFORMATION_OPTIONS_FIELDS)
};

#define NVES_FOLDERS_LIST_OPTIONS_FIELDS(FIELD, R)                                                           \
    FIELD(R, Text, template_) FIELD(R, Text, userFilter) FIELD(R, Text, startPosition)
/// "template": "include" lists template folders too, "only" nothing else.
struct NVESFoldersApi_ListOptions : NVESObject {
    NORVANE_RECORD(NVESFoldersApi_ListOptions, NVES_FOLDERS_LIST_OPTIONS_FIELDS)
};

#define NVES_LIST_TEMPLATES_OPTIONS_FIELDS(FIELD, R)                                                         \
    FIELD(R, Text, searchText)                                                                               \
    FIELD(R, Text, folder) FIELD(R, Text, folderIds) FIELD(R, Text, startPosition) FIELD(R, Text, count)     \
        FIELD(R, Text, order) FIELD(R, Text, orderBy) FIELD(R, Text, include) FIELD(R, Text, sharedByMe)     \
            FIELD(R, Text, userFilter) FIELD(R, Text, fromDate) FIELD(R, Text, toDate)
struct NVESTemplatesApi_ListTemplatesOptions : NVESObject {
    NORVANE_RECORD(NVESTemplatesApi_ListTemplatesOptions, NVES_LIST_TEMPLATES_OPTIONS_FIELDS)
};

#define NVES_LIST_STATUS_CHANGES_OPTIONS_FIELDS(FIELD, R)                                                    \
    FIELD(R, Text, transactionIds)                                                                           \
    FIELD(R, Text, envelopeIds) FIELD(R, Text, status) FIELD(R, Text, fromDate) FIELD(R, Text, toDate)       \
        FIELD(R, Text, fromToStatus) FIELD(R, Text, startPosition) FIELD(R, Text, count)
/// Several ids are joined by ",".
struct NVESEnvelopesApi_ListStatusChangesOptions : NVESObject {
    NORVANE_RECORD(NVESEnvelopesApi_ListStatusChangesOptions, NVES_LIST_STATUS_CHANGES_OPTIONS_FIELDS)
};

#define NVES_CREATE_ENVELOPE_OPTIONS_FIELDS(FIELD, R)                                                        \
    FIELD(R, Text, cdseMode) FIELD(R, Text, mergeRolesOnDraft)
struct NVESEnvelopesApi_CreateEnvelopeOptions : NVESObject {
    NORVANE_RECORD(NVESEnvelopesApi_CreateEnvelopeOptions, NVES_CREATE_ENVELOPE_OPTIONS_FIELDS)
};

#define NVES_RECIPIENT_OPTIONS_FIELDS(FIELD, R) FIELD(R, Text, resendEnvelope)
struct NVESEnvelopesApi_CreateRecipientOptions : NVESObject {
    NORVANE_RECORD(NVESEnvelopesApi_CreateRecipientOptions, NVES_RECIPIENT_OPTIONS_FIELDS)
};
struct NVESEnvelopesApi_DeleteRecipientsOptions : NVESObject {
    NORVANE_RECORD(NVESEnvelopesApi_DeleteRecipientsOptions, NVES_RECIPIENT_OPTIONS_FIELDS)
};

#define NVES_GET_ENVELOPE_OPTIONS_FIELDS(FIELD, R) FIELD(R, Text, include)
struct NVESEnvelopesApi_GetEnvelopeOptions : NVESObject {
    NORVANE_RECORD(NVESEnvelopesApi_GetEnvelopeOptions, NVES_GET_ENVELOPE_OPTIONS_FIELDS)
};

#define NVES_UPDATE_OPTIONS_FIELDS(FIELD, R)                                                                 \
    FIELD(R, Text, advancedUpdate) FIELD(R, Text, resendEnvelope)
struct NVESEnvelopesApi_UpdateOptions : NVESObject {
    NORVANE_RECORD(NVESEnvelopesApi_UpdateOptions, NVES_UPDATE_OPTIONS_FIELDS)
};

#define NVES_SEARCH_OPTIONS_FIELDS(FIELD, R)                                                                 \
    FIELD(R, Text, all)                                                                                      \
    FIELD(R, Text, count) FIELD(R, Text, fromDate) FIELD(R, Text, toDate) FIELD(R, Text, includeRecipients)  \
        FIELD(R, Text, order) FIELD(R, Text, orderBy) FIELD(R, Text, startPosition)
struct NVESFoldersApi_SearchOptions : NVESObject {
    NORVANE_RECORD(NVESFoldersApi_SearchOptions, NVES_SEARCH_OPTIONS_FIELDS)
};

#define NVES_CUSTOM_TABS_LIST_OPTIONS_FIELDS(FIELD, R) FIELD(R, Text, customTabOnly)
struct NVESCustomTabsApi_ListOptions : NVESObject {
    NORVANE_RECORD(NVESCustomTabsApi_ListOptions, NVES_CUSTOM_TABS_LIST_OPTIONS_FIELDS)
};

#define NVES_LIST_REQUEST_LOGS_OPTIONS_FIELDS(FIELD, R) FIELD(R, Text, encoding)
struct NVESDiagnosticsApi_ListRequestLogsOptions : NVESObject {
    NORVANE_RECORD(NVESDiagnosticsApi_ListRequestLogsOptions, NVES_LIST_REQUEST_LOGS_OPTIONS_FIELDS)
};

} // namespace norvane
// clang-format on
