#include "src/api/Operation.h"

#include <norvane/api/NVESAccounts.h>
#include <norvane/api/NVESAccountsApi.h>
#include <norvane/api/NVESAuthenticationApi.h>
#include <norvane/api/NVESConsumerDisclosureApi.h>
#include <norvane/api/NVESFoldersApi.h>
#include <norvane/api/NVESTemplates.h>
#include <norvane/api/NVESTemplatesApi.h>
#include <norvane/api/NVESUsersApi.h>

// The small service classes; envelopes have a source of their own.
namespace norvane {

std::uint64_t NVESAuthenticationApi::loginWithCompletionBlock(
    const NVESAuthenticationApi_LoginOptions& options,
    NVESRecordCompletion<NVESLoginInformation> completionHandler) const {
    constexpr Operation operation{"login", "GET", "/v2/login_information", "NVESLoginInformation"};
    return perform(operation, {{}, &options.type(), &options}, typed(std::move(completionHandler)));
}

std::uint64_t NVESAccountsApi::getAccountInformationWithCompletionBlock(
    const Text& accountId, const NVESAccountsApi_GetAccountInformationOptions& options,
    NVESRecordCompletion<NVESAccountInformation> completionHandler) const {
    constexpr Operation operation{"getAccountInformation", "GET", "/v2/accounts/{accountId}",
                                  "NVESAccountInformation"};
    return perform(operation, {{&accountId}, &options.type(), &options}, typed(std::move(completionHandler)));
}

std::uint64_t NVESAccountsApi::listSettingsWithCompletionBlock(
    const Text& accountId, NVESRecordCompletion<NVESAccountSettingsInformation> completionHandler) const {
    constexpr Operation operation{"listSettings", "GET", "/v2/accounts/{accountId}/settings",
                                  "NVESAccountSettingsInformation"};
    return perform(operation, {{&accountId}}, typed(std::move(completionHandler)));
}

std::uint64_t NVESUsersApi::getSettingsWithCompletionBlock(
    const Text& accountId, const Text& userId,
    NVESRecordCompletion<NVESUserSettingsInformation> completionHandler) const {
    constexpr Operation operation{"getSettings", "GET", "/v2/accounts/{accountId}/users/{userId}/settings",
                                  "NVESUserSettingsInformation"};
    return perform(operation, {{&accountId, &userId}}, typed(std::move(completionHandler)));
}

std::uint64_t NVESConsumerDisclosureApi::getConsumerDisclosureWithCompletionBlock(
    const Text& accountId, NVESRecordCompletion<NVESConsumerDisclosure> completionHandler) const {
    constexpr Operation operation{"getConsumerDisclosure", "GET",
                                  "/v2/accounts/{accountId}/consumer_disclosure", "NVESConsumerDisclosure"};
    return perform(operation, {{&accountId}}, typed(std::move(completionHandler)));
}

std::uint64_t
NVESFoldersApi::listWithCompletionBlock(const Text& accountId, const NVESFoldersApi_ListOptions& options,
                                        NVESRecordCompletion<NVESFoldersResponse> completionHandler) const {
    constexpr Operation operation{"list", "GET", "/v2/accounts/{accountId}/folders", "NVESFoldersResponse"};
    return perform(operation, {{&accountId}, &options.type(), &options}, typed(std::move(completionHandler)));
}

std::uint64_t NVESTemplatesApi::listTemplatesWithCompletionBlock(
    const Text& accountId, const NVESTemplatesApi_ListTemplatesOptions& options,
    NVESRecordCompletion<NVESEnvelopeTemplateResults> completionHandler) const {
    constexpr Operation operation{"listTemplates", "GET", "/v2/accounts/{accountId}/templates",
                                  "NVESEnvelopeTemplateResults"};
    return perform(operation, {{&accountId}, &options.type(), &options}, typed(std::move(completionHandler)));
}

std::uint64_t
NVESTemplatesApi::getWithCompletionBlock(const Text& accountId, const Text& templateId,
                                         NVESRecordCompletion<NVESEnvelopeTemplate> completionHandler) const {
    constexpr Operation operation{"get", "GET", "/v2/accounts/{accountId}/templates/{templateId}",
                                  "NVESEnvelopeTemplate"};
    return perform(operation, {{&accountId, &templateId}}, typed(std::move(completionHandler)));
}

std::uint64_t NVESTemplatesApi::getDocumentWithCompletionBlock(const Text& accountId, const Text& templateId,
                                                               const Text& documentId,
                                                               NVESFileCompletion completionHandler) const {
    constexpr Operation operation{"getDocument", "GET",
                                  "/v2/accounts/{accountId}/templates/{templateId}/documents/{documentId}",
                                  "NSURL*"};
    return perform(operation, {{&accountId, &templateId, &documentId}}, asFile(std::move(completionHandler)));
}

} // namespace norvane
