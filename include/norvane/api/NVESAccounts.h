#pragma once

#include <norvane/api/NVESObject.h>

// Accounts, users and the small records that all families share.
// A field list is a table, so its form is its own.
// clang-format off
namespace norvane {

struct NVESErrorDetails;
struct NVESFolder;
struct NVESLoginAccount;
struct NVESNameValue;

#define NVES_ACCOUNT_INFORMATION_FIELDS(FIELD, R) \
    FIELD(R, Text, accountIdGuid) FIELD(R, Text, accountName) FIELD(R, Text, planName) \
    FIELD(R, Text, currentPlanId) FIELD(R, Rest, otherMembers)
struct NVESAccountInformation : NVESObject {
    NORVANE_RECORD(NVESAccountInformation, NVES_ACCOUNT_INFORMATION_FIELDS)
};

#define NVES_ACCOUNT_SETTINGS_INFORMATION_FIELDS(FIELD, R) \
    FIELD(R, List<NVESNameValue>, accountSettings) FIELD(R, Rest, otherMembers)
struct NVESAccountSettingsInformation : NVESObject {
    NORVANE_RECORD(NVESAccountSettingsInformation, NVES_ACCOUNT_SETTINGS_INFORMATION_FIELDS)
};

#define NVES_USER_SETTINGS_INFORMATION_FIELDS(FIELD, R) \
    FIELD(R, List<NVESNameValue>, userSettings) FIELD(R, Rest, otherMembers)
struct NVESUserSettingsInformation : NVESObject {
    NORVANE_RECORD(NVESUserSettingsInformation, NVES_USER_SETTINGS_INFORMATION_FIELDS)
};

#define NVES_CONSUMER_DISCLOSURE_FIELDS(FIELD, R) \
    FIELD(R, Text, accountEsignId) FIELD(R, Text, esignAgreement) FIELD(R, Text, esignText) \
    FIELD(R, Rest, otherMembers)
struct NVESConsumerDisclosure : NVESObject {
    NORVANE_RECORD(NVESConsumerDisclosure, NVES_CONSUMER_DISCLOSURE_FIELDS)
};

#define NVES_FOLDER_FIELDS(FIELD, R) \
    FIELD(R, Text, ownerUserName) FIELD(R, Text, ownerEmail) FIELD(R, Text, ownerUserId) \
    FIELD(R, Text, type_) FIELD(R, Text, name) FIELD(R, Text, uri) FIELD(R, Text, parentFolderId) \
    FIELD(R, Text, parentFolderUri) FIELD(R, Text, folderId) FIELD(R, Rest, otherMembers)
struct NVESFolder : NVESObject {
    NORVANE_RECORD(NVESFolder, NVES_FOLDER_FIELDS)
};

#define NVES_FOLDERS_RESPONSE_FIELDS(FIELD, R) \
    FIELD(R, List<NVESFolder>, folders) FIELD(R, Rest, otherMembers)
struct NVESFoldersResponse : NVESObject {
    NORVANE_RECORD(NVESFoldersResponse, NVES_FOLDERS_RESPONSE_FIELDS)
};

#define NVES_ERROR_DETAILS_FIELDS(FIELD, R) \
    FIELD(R, Text, errorCode) FIELD(R, Text, message)
struct NVESErrorDetails : NVESObject {
    NORVANE_RECORD(NVESErrorDetails, NVES_ERROR_DETAILS_FIELDS)
};

#define NVES_NAME_VALUE_FIELDS(FIELD, R) \
    FIELD(R, Text, name) FIELD(R, Text, value) FIELD(R, Record<NVESErrorDetails>, errorDetails)
struct NVESNameValue : NVESObject {
    NORVANE_RECORD(NVESNameValue, NVES_NAME_VALUE_FIELDS)
};

#define NVES_USER_INFO_FIELDS(FIELD, R) \
    FIELD(R, Text, userName) FIELD(R, Text, email) FIELD(R, Text, userId) FIELD(R, Text, userType) \
    FIELD(R, Text, userStatus) FIELD(R, Text, uri) FIELD(R, Record<NVESErrorDetails>, errorDetails)
struct NVESUserInfo : NVESObject {
    NORVANE_RECORD(NVESUserInfo, NVES_USER_INFO_FIELDS)
};

#define NVES_LOGIN_ACCOUNT_FIELDS(FIELD, R) \
    FIELD(R, Text, name) FIELD(R, Text, accountId) FIELD(R, Text, accountIdGuid) \
    FIELD(R, Text, baseUrl) FIELD(R, Text, isDefault) FIELD(R, Text, userName) FIELD(R, Text, userId) \
    FIELD(R, Text, email) FIELD(R, Text, siteDescription) \
    FIELD(R, List<NVESNameValue>, loginAccountSettings) \
    FIELD(R, List<NVESNameValue>, loginUserSettings)
struct NVESLoginAccount : NVESObject {
    NORVANE_RECORD(NVESLoginAccount, NVES_LOGIN_ACCOUNT_FIELDS)
};

#define NVES_LOGIN_INFORMATION_FIELDS(FIELD, R) \
    FIELD(R, List<NVESLoginAccount>, loginAccounts) FIELD(R, Text, apiPassword)
struct NVESLoginInformation : NVESObject {
    NORVANE_RECORD(NVESLoginInformation, NVES_LOGIN_INFORMATION_FIELDS)
};

} // namespace norvane
// clang-format on
