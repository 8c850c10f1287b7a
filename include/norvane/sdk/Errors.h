#pragma once

#include <norvane/platform/NVMError.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace norvane {

// Domains of the kit's errors.
inline constexpr std::string_view NVM_TEMPLATE_IMPORT_ERROR = "template.import.error";
inline constexpr std::string_view NVM_TEMPLATE_SAVE_ERROR = "template.save.error";
inline constexpr std::string_view NVM_TEMPLATE_SEND_ERROR = "template.send.error";
inline constexpr std::string_view NVM_TEMPLATE_SIGN_ERROR = "template.sign.error";
inline constexpr std::string_view NVM_TEMPLATE_ENVELOPE_DEFAULTS_ERROR = "template.envelope.defaults.error";
inline constexpr std::string_view NVM_USER_LOGIN_ERROR = "user.login.error";
inline constexpr std::string_view NVM_USER_PERSIST_ERROR = "user.persist.error";
inline constexpr std::string_view NVM_USER_ADDITIONAL_DATA_FETCH_ERROR = "user.additional.data.fetch.error";
inline constexpr std::string_view NVM_USER_NOT_LOGGED_IN_ERROR = "user.not.logged.in.error";
inline constexpr std::string_view NVM_SDK_SETUP_ERROR = "sdk.setup.error";
inline constexpr std::string_view NVM_DOCUMENT_INVALID_TYPE_ERROR = "document.invalid.type.error";
inline constexpr std::string_view NVM_DOCUMENT_EXCEEDS_LIMIT_ERROR = "document.exceeds.limit.error";
inline constexpr std::string_view NVM_DOCUMENT_GENERIC_ERROR = "document.generic.error";

// Makers of the kit's errors. Each error has code 0, a description and a failure reason (an upper-case code
// word); what some carry besides is said with them. Misspelt names, reasons and texts are the kit's
// vocabulary.

// Caching a template.
NVMError NVM_errorTemplateImportFailed();
NVMError NVM_errorTemplateHasNoDocuments();
NVMError NVM_errorTemplateHasNoRecipients();
/// "UnsupportedTabs" holds the types, "RecipientName" the name or "(null)".
NVMError NVM_errorTemplateHasUnsupportedTabTypes(const std::vector<std::string>& tabTypes,
                                                 const std::optional<std::string>& recipientName);
/// "UnsupportedAttributes" holds the attributes, "RecipientName" the name or "(null)".
NVMError
NVM_errorTemplateHasInvalidOfflineRecipientAttributes(const std::vector<std::string>& attributes,
                                                      const std::optional<std::string>& recipientName);
/// "UnsupportedAttributes" holds the attributes, "RecipientName" the name or "(null)".
NVMError NVM_errorTemplateHasInvalidRecipientTabAttributes(const std::vector<std::string>& attributes,
                                                           const std::optional<std::string>& recipientName);
NVMError NVM_errorTemplateHasRecipientRequiredDigitalCertificate();
NVMError NVM_errorTemplateInpersonRecipientMissingRole();
NVMError NVM_errorTemplateOnlyInpersonRecipientAllowRole();
NVMError NVM_errorTemplateRecipientRoleNameMissing();
NVMError NVM_errorTemplateRecipientNeedsSignInEachLocation();
NVMError NVM_errorTemplateWithSignGroupIsNotSupported();
NVMError NVM_errorTemplateRecipientsHasConflictingRoleNames();
NVMError NVM_errorCacheTemplateHasUnspportedFreeFormSigner();
NVMError NVM_errorTemplateHasInvalidListCustomFields();
/// Its domain is the empty text, deliberately.
NVMError NVM_errorCacheTemplateHasUnsupportedSupplementalDocument();

// Sending and signing a template.
NVMError NVM_errorTemplateNotInCache();
NVMError NVM_errorDuplicateRecipientsFound();     ///< localised
NVMError NVM_errorOfflineSigningUnavailable();    ///< localised
NVMError NVM_errorDuplicateSignersOfflineFound(); ///< localised
NVMError NVM_errorInvalidInPersonSignerName();
NVMError NVM_errorInvalidSignerName();
NVMError NVM_errorInvalidSignerEmail();
NVMError NVM_errorInvalidRecipientId();
NVMError NVM_errorTemplateHasUnspportedFreeFormSigner();
NVMError NVM_errorTemplateHasInvalidTextCustomFields();
NVMError NVM_errorTemplateHasInvalidFormula();
/// Names the formula and the tab that holds it; an absent one reads "(null)".
NVMError NVM_errorTemplateHasInvalidFormula(const std::optional<std::string>& formula,
                                            const std::optional<std::string>& inTab);

// Envelope defaults.
/// "roleName" holds the role name or "(null)".
NVMError NVM_errorTemplateWithInvalidRecipientsForRoleName(const std::optional<std::string>& roleName);
NVMError NVM_errorTemplateCannotRemoveRecipient();
/// "tabLabels" holds the labels joined by ", ", or "-no-tab-labels-or-ids-found-" when there are none.
NVMError
NVM_errorEnvelopeHasInvalidDefaultsForTabLabels(const std::optional<std::vector<std::string>>& tabLabels);

// Set-up and sign-in.
NVMError NVM_errorUserNotLoggedIn();
NVMError NVM_errorSetupIncomplete();
NVMError NVM_errorInvalidInput();
NVMError NVM_errorFetchAccountInformation();
/// `missingNames`: "AccessToken", "AccountId" ... in the order in which they shall be named.
NVMError NVM_errorInvalidLoginParameters(const std::vector<std::string>& missingNames);
/// `failedKeys`: entries "<field>:<detail>", in order.
NVMError NVM_errorDataPersistenceFailedWithKeys(const std::vector<std::string>& failedKeys);
/// A service error as the failure of fetching an account's additional data: its code, the service's own
/// message and error code where it sent a body, else the error's own description.
NVMError NVM_errorFromAdditionalDataFetchForAccountError(const NVMError& error);
/// A service error under another domain. The code and all user information are kept; where the service sent a
/// body, its "message" and "errorCode" become description and failure reason.
NVMError NVM_errorFromServiceResponseError(const NVMError& error, std::string domain);

// Choosing a document.
NVMError NVM_errorDocumentCreationInvalidType();
NVMError NVM_errorDocumentCreationExceedsFileLimit();
NVMError NVM_errorDocumentCreationGeneric();

} // namespace norvane
