#include <norvane/platform/Platform.h>
#include <norvane/sdk/Errors.h>
#include <norvane/sdk/NVMAPIErrorResponse.h>

namespace norvane {
namespace {

/// One error of the kit. In the description each "%@" stands for an argument.
struct Row {
    std::string_view domain;
    std::string_view description;
    std::string_view reason;
};

constexpr std::string_view kFetchError = "SDK.fetch.error";

std::string withArguments(std::string_view format, std::initializer_list<std::string_view> arguments) {
    std::string text;
    for (const std::string_view argument : arguments) {
        const auto at = format.find("%@");
        text.append(format.substr(0, at)).append(argument);
        format.remove_prefix(at + 2);
    }
    return text.append(format);
}

NVMError make(const Row& row, std::initializer_list<std::string_view> arguments = {}) {
    return NVMError::make(std::string(row.domain), 0, withArguments(row.description, arguments),
                          std::string(row.reason));
}

NVMError makeLocalized(std::string_view domain, std::string_view key, std::string_view reason) {
    return NVMError::make(std::string(domain), 0, Platform::current().strings->text(key),
                          std::string(reason));
}

std::string orNull(const std::optional<std::string>& text) { return text.value_or("(null)"); }

std::string joined(const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts) {
        if (!text.empty()) text += ", ";
        text += part;
    }
    return text;
}

NVMError makeForRecipient(const Row& row, std::string_view listKey, const std::vector<std::string>& list,
                          const std::optional<std::string>& recipientName) {
    NVMError error = make(row);
    error.userInfo.insert_or_assign(std::string(listKey), Array(list.begin(), list.end()));
    error.userInfo.insert_or_assign("RecipientName", orNull(recipientName));
    return error;
}

/// The body that the service sent with an error, when it was a JSON object.
const Dictionary* serviceBody(const NVMError& error) {
    const auto found = error.userInfo.find(kServiceResponseObjectKey);
    return found == error.userInfo.end() ? nullptr : found->second.asDictionary();
}

} // namespace

#define NORVANE_ERROR(MAKER, DOMAIN_, DESCRIPTION, REASON)                                                   \
    NVMError MAKER() { return make({DOMAIN_, DESCRIPTION, REASON}); }

// clang-format off: a table.
NORVANE_ERROR(NVM_errorTemplateImportFailed, NVM_TEMPLATE_IMPORT_ERROR, "Template import failed.",
              "TEMPLATE_IMPORT_FAILED")
NORVANE_ERROR(NVM_errorTemplateHasNoDocuments, NVM_TEMPLATE_SAVE_ERROR, "Template has no documents.",
              "TEMPLATE_ERROR_NO_DOCUMENT")
NORVANE_ERROR(NVM_errorTemplateHasNoRecipients, NVM_TEMPLATE_SAVE_ERROR, "Template has no recipients.",
              "TEMPLATE_ERROR_NO_RECIPIENT")
NORVANE_ERROR(NVM_errorTemplateHasRecipientRequiredDigitalCertificate, NVM_TEMPLATE_SAVE_ERROR,
              "Templates do not support Digital Certificates.", "TEMPLATES_ERROR_DIGITAL_CERTIFICATE")
NORVANE_ERROR(NVM_errorTemplateInpersonRecipientMissingRole, NVM_TEMPLATE_SAVE_ERROR,
              "In-person recipient missing role name.", "TEMPLATE_ERROR_INPERSON_MISSING_ROLE")
NORVANE_ERROR(NVM_errorTemplateOnlyInpersonRecipientAllowRole, NVM_TEMPLATE_SAVE_ERROR,
              "Only role name allowed for in-person recipients.", "TEMPLATE_ERROR_INPERSON_ONLY_ROLE_ALLOWED")
NORVANE_ERROR(NVM_errorTemplateRecipientRoleNameMissing, NVM_TEMPLATE_SAVE_ERROR,
              "All recipients must have role names.", "TEMPLATE_RECIPIENT_ROLENAME_MISSING")
NORVANE_ERROR(NVM_errorTemplateRecipientNeedsSignInEachLocation, NVM_TEMPLATE_SAVE_ERROR,
              "Recipient needs to sign in each location.",
              "TEMPLATE_RECIPIENT_SIGN_EACH_LOCATION_NOT_SUPPOERTED")
NORVANE_ERROR(NVM_errorTemplateWithSignGroupIsNotSupported, NVM_TEMPLATE_SAVE_ERROR,
              "Template with signing group is currently not supported.", "TEMPLATE_SIGNGROUP_NOT_SUPPORTED")
NORVANE_ERROR(NVM_errorTemplateRecipientsHasConflictingRoleNames, NVM_TEMPLATE_SAVE_ERROR,
              "Conflicting recipients with same role name.", "TEMPLATE_CONFLICTING_ROLE_NAME")
NORVANE_ERROR(NVM_errorCacheTemplateHasUnspportedFreeFormSigner, NVM_TEMPLATE_SAVE_ERROR,
              "Template has freeform signer(s).", "TEMPLATE_HAS_FREEFORM_SIGNERS")
NORVANE_ERROR(NVM_errorTemplateHasInvalidListCustomFields, NVM_TEMPLATE_SAVE_ERROR,
              "Template has required List Customfield(s) which are not supported.",
              "TEMPLATE_HAS_UNSUPPORTED_LIST_CUSTOMFIELDS")
NORVANE_ERROR(NVM_errorCacheTemplateHasUnsupportedSupplementalDocument, "",
              "Template has unsupported Supplemental Document(s).",
              "TEMPLATE_HAS_UNSUPPORTED_SUPPLEMENTAL_DOCUMENTS")
NORVANE_ERROR(NVM_errorTemplateNotInCache, NVM_TEMPLATE_SEND_ERROR, "Template is currently not saved.",
              "TEMPLATE_IS_NOT_IN_CACHE")
NORVANE_ERROR(NVM_errorInvalidInPersonSignerName, NVM_TEMPLATE_SEND_ERROR, "Inperson signer name is invalid.",
              "RECIPIENT_INPERSON_SIGNERNAME_INVALID")
NORVANE_ERROR(NVM_errorInvalidSignerName, NVM_TEMPLATE_SEND_ERROR, "Signer name is invalid.",
              "RECIPIENT_SIGNERNAME_INVALID")
NORVANE_ERROR(NVM_errorInvalidSignerEmail, NVM_TEMPLATE_SEND_ERROR, "Signer email is invalid.",
              "RECIPIENT_SIGNEREMAIL_INVALID")
NORVANE_ERROR(NVM_errorInvalidRecipientId, NVM_TEMPLATE_SEND_ERROR, "Recipient id is invalid.",
              "INVALID_REECIPIENT_ID")
NORVANE_ERROR(NVM_errorTemplateHasUnspportedFreeFormSigner, NVM_TEMPLATE_SIGN_ERROR,
              "Template has freeform signer(s).", "TEMPLATE_HAS_FREEFORM_SIGNERS")
NORVANE_ERROR(NVM_errorTemplateHasInvalidTextCustomFields, NVM_TEMPLATE_SIGN_ERROR,
              "Template has required Text Customfield(s) for which value is not supplied.",
              "TEMPLATE_HAS_UNSUPPORTED_TEXT_CUSTOMFIELDS")
NORVANE_ERROR(NVM_errorTemplateHasInvalidFormula, NVM_TEMPLATE_SIGN_ERROR,
              "Template has invalid formula(s) which value are not supported.",
              "TEMPLATE_HAS_INVALID_FORMULA")
NORVANE_ERROR(NVM_errorTemplateCannotRemoveRecipient, NVM_TEMPLATE_ENVELOPE_DEFAULTS_ERROR,
              "Recipient cannot be removed for this Template.", "RECIPIENT_CANNOT_BE_REMOVED")
NORVANE_ERROR(NVM_errorUserNotLoggedIn, NVM_USER_NOT_LOGGED_IN_ERROR, "User not logged in",
              "USER_NOT_LOGGED_IN_ERROR")
NORVANE_ERROR(NVM_errorSetupIncomplete, NVM_SDK_SETUP_ERROR, "SDK setup failed", "SDK_SETUP_ERROR")
NORVANE_ERROR(NVM_errorInvalidInput, kFetchError, "Input parameter is ill-formed", "SDK_INVALID_INPUT")
NORVANE_ERROR(NVM_errorFetchAccountInformation, NVM_USER_LOGIN_ERROR,
              "Account information can not be fetched for given User.", "USER_LOGIN_INFORMATION_ERROR")
NORVANE_ERROR(NVM_errorDocumentCreationInvalidType, NVM_DOCUMENT_INVALID_TYPE_ERROR,
              "Invalid document format. Please try again.", "DOCUMENT_CREATION_INVALID_FILE_TYPE")
NORVANE_ERROR(NVM_errorDocumentCreationExceedsFileLimit, NVM_DOCUMENT_EXCEEDS_LIMIT_ERROR,
              "Document exceeds max size of 25MB.", "DOCUMENT_CREATION_EXCEEDS_FILE_LIMIT")
NORVANE_ERROR(NVM_errorDocumentCreationGeneric, NVM_DOCUMENT_GENERIC_ERROR,
              "Error with selecting document. Please try again.", "DOCUMENT_CREATION_GENERIC")
// clang-format on
#undef NORVANE_ERROR

NVMError NVM_errorDuplicateRecipientsFound() {
    return makeLocalized(NVM_TEMPLATE_SEND_ERROR, "Templates.DuplicateRecipients.Error",
                         "TEMPLATE_DUPLICATE_RECIPIENTS_FOUND");
}

NVMError NVM_errorOfflineSigningUnavailable() {
    return makeLocalized(NVM_TEMPLATE_SEND_ERROR, "General.OfflineSigningUnavailable",
                         "OFFLINE_SIGNING_UNAVAILABLE");
}

NVMError NVM_errorDuplicateSignersOfflineFound() {
    return makeLocalized(NVM_TEMPLATE_SEND_ERROR, "Templates.DuplicateSignersOffline.Error",
                         "TEMPLATE_DUPLICATE_SIGNERS_OFFLINE_FOUND");
}

NVMError NVM_errorTemplateHasUnsupportedTabTypes(const std::vector<std::string>& tabTypes,
                                                 const std::optional<std::string>& recipientName) {
    return makeForRecipient(
        {NVM_TEMPLATE_SAVE_ERROR, "Template has unsupported tabs.", "TEMPLATE_ERROR_UNSUPPORTED_TABS"},
        "UnsupportedTabs", tabTypes, recipientName);
}

NVMError
NVM_errorTemplateHasInvalidOfflineRecipientAttributes(const std::vector<std::string>& attributes,
                                                      const std::optional<std::string>& recipientName) {
    return makeForRecipient({NVM_TEMPLATE_SAVE_ERROR, "Template has unsupported Recipient attributes.",
                             "TEMPLATES_ERROR_RECIPIENT_ATTRIBUTES"},
                            "UnsupportedAttributes", attributes, recipientName);
}

NVMError NVM_errorTemplateHasInvalidRecipientTabAttributes(const std::vector<std::string>& attributes,
                                                           const std::optional<std::string>& recipientName) {
    return makeForRecipient({NVM_TEMPLATE_SAVE_ERROR, "Template has unsupported Recipient Tab attributes.",
                             "TEMPLATES_ERROR_RECIPIENT_TAB_ATTRIBUTES"},
                            "UnsupportedAttributes", attributes, recipientName);
}

NVMError NVM_errorTemplateHasInvalidFormula(const std::optional<std::string>& formula,
                                            const std::optional<std::string>& inTab) {
    return make({NVM_TEMPLATE_SIGN_ERROR,
                 "The formula for tab: %@ is invalid. Formula = %@ is not a valid field.",
                 "TEMPLATE_HAS_INVALID_FORMULA"},
                {orNull(inTab), orNull(formula)});
}

NVMError NVM_errorTemplateWithInvalidRecipientsForRoleName(const std::optional<std::string>& roleName) {
    NVMError error = make({NVM_TEMPLATE_ENVELOPE_DEFAULTS_ERROR,
                           "Template has invalid recipient(s) associated with roleName: %@.",
                           "TEMPLATE_ERROR_INVALID_ROLENAME_RECIPIENTS"},
                          {orNull(roleName)});
    error.userInfo.insert_or_assign("roleName", orNull(roleName));
    return error;
}

NVMError
NVM_errorEnvelopeHasInvalidDefaultsForTabLabels(const std::optional<std::vector<std::string>>& tabLabels) {
    NVMError error =
        make({NVM_TEMPLATE_ENVELOPE_DEFAULTS_ERROR, "Envelope has tabs with invalid default value.",
              "ENVELOPE_WITH_INVALID_TEXT_TAB_DEFAULTS"});
    const bool none = !tabLabels || tabLabels->empty();
    error.userInfo.insert_or_assign("tabLabels", none ? "-no-tab-labels-or-ids-found-" : joined(*tabLabels));
    return error;
}

NVMError NVM_errorInvalidLoginParameters(const std::vector<std::string>& missingNames) {
    return make({NVM_USER_LOGIN_ERROR, "Invalid login information for given User: %@",
                 "USER_LOGIN_INFORMATION_ERROR"},
                {joined(missingNames)});
}

NVMError NVM_errorDataPersistenceFailedWithKeys(const std::vector<std::string>& failedKeys) {
    return make({NVM_USER_PERSIST_ERROR, "Account information could not be persisted for keys: %@",
                 "USER_LOGIN_PERSIST_ERROR"},
                {joined(failedKeys)});
}

NVMError NVM_errorFromAdditionalDataFetchForAccountError(const NVMError& error) {
    constexpr std::string_view format = "Unable to fetch additional data for user - %@";
    std::string domain(NVM_USER_ADDITIONAL_DATA_FETCH_ERROR);
    const Dictionary* body = serviceBody(error);
    if (!body) {
        return NVMError::make(std::move(domain), error.code,
                              withArguments(format, {error.localizedDescription()}),
                              "USER_ADDITIONAL_DATA_FETCH_ERROR");
    }
    const NVMAPIErrorResponse response(*body);
    Dictionary information = error.userInfo;
    information.insert_or_assign(
        std::string(kLocalizedDescriptionKey),
        withArguments(format, {response.message.value_or(error.localizedDescription())}));
    information.insert_or_assign(std::string(kFailureReasonKey),
                                 response.errorCode.value_or("USER_ADDITIONAL_DATA_FETCH_ERROR"));
    return {std::move(domain), error.code, std::move(information)};
}

NVMError NVM_errorFromServiceResponseError(const NVMError& error, std::string domain) {
    Dictionary information = error.userInfo;
    if (const Dictionary* body = serviceBody(error)) {
        const NVMAPIErrorResponse response(*body);
        if (response.message) {
            information.insert_or_assign(std::string(kLocalizedDescriptionKey), *response.message);
        }
        if (response.errorCode) {
            information.insert_or_assign(std::string(kFailureReasonKey), *response.errorCode);
        }
    }
    return {std::move(domain), error.code, std::move(information)};
}

} // namespace norvane
