#pragma once

#include <norvane/api/NVESObject.h>

// Requests for and addresses of the pages of the service.
// A field list is a table, so its form is its own.
// clang-format off
namespace norvane {

#define NVES_VIEW_URL_FIELDS(FIELD, R) \
    FIELD(R, Text, url)
struct NVESViewUrl : NVESObject {
    NORVANE_RECORD(NVESViewUrl, NVES_VIEW_URL_FIELDS)
};

#define NVES_RECIPIENT_VIEW_REQUEST_FIELDS(FIELD, R) \
    FIELD(R, Text, clientUserId) FIELD(R, Text, userId) FIELD(R, Text, userName) FIELD(R, Text, email) \
    FIELD(R, Text, recipientId) FIELD(R, Text, returnUrl) FIELD(R, Text, pingUrl) \
    FIELD(R, Text, pingFrequency) FIELD(R, Text, authenticationMethod) FIELD(R, Text, assertionId) \
    FIELD(R, Text, authenticationInstant) FIELD(R, Text, securityDomain)
struct NVESRecipientViewRequest : NVESObject {
    NORVANE_RECORD(NVESRecipientViewRequest, NVES_RECIPIENT_VIEW_REQUEST_FIELDS)
};

#define NVES_RETURN_URL_REQUEST_FIELDS(FIELD, R) \
    FIELD(R, Text, returnUrl)
struct NVESReturnUrlRequest : NVESObject {
    NORVANE_RECORD(NVESReturnUrlRequest, NVES_RETURN_URL_REQUEST_FIELDS)
};

} // namespace norvane
// clang-format on
