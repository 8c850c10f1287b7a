#pragma once

#include <norvane/api/NVESOptions.h>
#include <norvane/api/NVESServiceApi.h>
#include <norvane/platform/Data.h>
#include <norvane/platform/Url.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace norvane {

struct NVESAccountInformation;
struct NVESAccountSettingsInformation;
struct NVESConsumerDisclosure;
struct NVESEnvelopeDefinition;
struct NVESEnvelopesInformation;
struct NVESEnvelopeSummary;
struct NVESEnvelopeTemplate;
struct NVESEnvelopeTemplateResults;
struct NVESFoldersResponse;
struct NVESLoginInformation;
struct NVESRecipients;
struct NVESRecipientViewRequest;
struct NVESTabs;
struct NVESUserSettingsInformation;
struct NVESViewUrl;
struct NVMAccount;

/// The service operations that the kit uses, each a class operation: it reads the stored account, makes a
/// client over the account's base address, adds the authentication headers and fills in the account id. Any
/// thread may call. Each gives the request's id (see NVESApiClient::cancelRequest) and completes once, on the
/// HTTP session's completion thread; completions may be null. Without a stored account the error is
/// NVM_errorUserNotLoggedIn. An absent identifier throws NVMException "Invalid parameter".
class NVMApi {
  public:
    using Text = std::optional<std::string>;
    template <class T>
    using Completion = NVESRecordCompletion<T>;

    NVMApi() = delete;

    /// Needs no stored account: asks with the user's name and password for the user's accounts at `host`.
    static std::uint64_t loginWithUserId(const std::string& userId, const std::string& password,
                                         const std::string& integratorKey, const Url& host,
                                         Completion<NVESLoginInformation> completion);

    static std::uint64_t getAccountForAccountId(const Text& accountId,
                                                Completion<NVESAccountInformation> completion);
    static std::uint64_t
    getAccountSettingsForAccountId(const Text& accountId,
                                   Completion<NVESAccountSettingsInformation> completion);
    static std::uint64_t getUserSettingsForAccountId(const Text& accountId, const Text& userId,
                                                     Completion<NVESUserSettingsInformation> completion);
    static std::uint64_t getConsumerDisclosureForAccountId(const Text& accountId,
                                                           Completion<NVESConsumerDisclosure> completion);
    static std::uint64_t getFoldersWithOptions(const NVESFoldersApi_ListOptions& options,
                                               Completion<NVESFoldersResponse> completion);

    static std::uint64_t getTemplatesWithCompletion(Completion<NVESEnvelopeTemplateResults> completion);
    static std::uint64_t getTemplatesWithOptions(const NVESTemplatesApi_ListTemplatesOptions& options,
                                                 Completion<NVESEnvelopeTemplateResults> completion);
    static std::uint64_t getTemplateWithId(const Text& templateId,
                                           Completion<NVESEnvelopeTemplate> completion);
    static std::uint64_t getDocumentForTemplateId(const Text& templateId, const Text& documentId,
                                                  NVESFileCompletion completion);
    /// All documents of the template in one PDF.
    static std::uint64_t getCombinedDocumentForTemplateId(const Text& templateId,
                                                          NVESFileCompletion completion);

    static std::uint64_t
    createEnvelopeWithEnvelopeDefinition(const NVESEnvelopeDefinition& envelopeDefinition,
                                         Completion<NVESEnvelopeSummary> completionHandler);
    /// Uploads an envelope with its documents and signature images in one request. Changes the definition:
    /// `DisableResponsiveDocument` becomes "true", local file addresses and image data are cleared.
    static std::uint64_t
    createOfflineEnvelopeWithEnvelopeDefinition(NVESEnvelopeDefinition& envelopeDefinition,
                                                Completion<NVESEnvelopeSummary> completionHandler);
    static std::uint64_t
    listStatusChangesWithOptions(const NVESEnvelopesApi_ListStatusChangesOptions& options,
                                 Completion<NVESEnvelopesInformation> completionHandler);

    static std::uint64_t getRecipientsForEnvelopeWithEnvelopeId(const Text& envelopeId,
                                                                Completion<NVESRecipients> completionHandler);
    static std::uint64_t addRecipientsToEnvelopeWithId(const Text& envelopeId,
                                                       const NVESRecipients& recipients,
                                                       const NVESEnvelopesApi_CreateRecipientOptions& options,
                                                       Completion<NVESRecipients> completionHandler);
    static std::uint64_t
    deleteRecipientsFromEnvelopeWithId(const Text& envelopeId, const NVESRecipients& recipients,
                                       const NVESEnvelopesApi_DeleteRecipientsOptions& options,
                                       Completion<NVESRecipients> completionHandler);
    static std::uint64_t addTabsToRecipientWithId(const Text& recipientId, const Text& forEnvelopeId,
                                                  const NVESTabs& tabs,
                                                  Completion<NVESTabs> completionHandler);
    static std::uint64_t getRecipientViewForRecipient(const NVESRecipientViewRequest& recipient,
                                                      const Text& inEnvelopeWithId,
                                                      Completion<NVESViewUrl> completionHandler);
    /// PNG bytes; `ofType` is "signature_image" or "initials_image".
    static std::uint64_t setImageToRecipientWithId(const Text& recipientId, const Text& forEnvelopeId,
                                                   const Data& image, const Text& ofType,
                                                   NVESValueCompletion completionHandler);
    static std::uint64_t getSignatureForRecipientWithId(const Text& recipientId, const Text& forEnvelopeId,
                                                        NVESValueCompletion completionHandler);

    /// Any operation of the table; its `accountId` is the stored account's when none is given. The offline
    /// upload is that of `createOfflineEnvelopeWithEnvelopeDefinition`.
    static std::uint64_t callOperation(const NVESOperation& operation, NVESOperationArguments arguments,
                                       NVESCompletion completionHandler);

    /// The authentication headers of the stored account, by name; empty without one.
    static Dictionary setUpHeaders();
    /// The value of "X-Norvane-Authentication". Values are put in as they are, not escaped.
    static std::string norvaneAuthStringForAccount(const NVMAccount& account);
    /// The value of "Authorization": "Bearer " and the access token.
    static std::string authorizationStringForAccount(const NVMAccount& account);
};

} // namespace norvane
