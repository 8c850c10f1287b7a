#include "src/api/OperationTable.h"

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
    return perform(operationOf("NVESAuthenticationApi", "login"), {.path = {}, .options = &options},
                   typed(std::move(completionHandler)));
}

std::uint64_t NVESAccountsApi::getAccountInformationWithCompletionBlock(
    const Text& accountId, const NVESAccountsApi_GetAccountInformationOptions& options,
    NVESRecordCompletion<NVESAccountInformation> completionHandler) const {
    return perform(operationOf("NVESAccountsApi", "getAccountInformation"), {{&accountId}, &options},
                   typed(std::move(completionHandler)));
}

std::uint64_t NVESAccountsApi::listSettingsWithCompletionBlock(
    const Text& accountId, NVESRecordCompletion<NVESAccountSettingsInformation> completionHandler) const {
    return perform(operationOf("NVESAccountsApi", "listSettings"), {{&accountId}},
                   typed(std::move(completionHandler)));
}

std::uint64_t NVESUsersApi::getSettingsWithCompletionBlock(
    const Text& accountId, const Text& userId,
    NVESRecordCompletion<NVESUserSettingsInformation> completionHandler) const {
    return perform(operationOf("NVESUsersApi", "getSettings"), {{&accountId, &userId}},
                   typed(std::move(completionHandler)));
}

std::uint64_t NVESConsumerDisclosureApi::getConsumerDisclosureWithCompletionBlock(
    const Text& accountId, NVESRecordCompletion<NVESConsumerDisclosure> completionHandler) const {
    return perform(operationOf("NVESConsumerDisclosureApi", "getConsumerDisclosure"), {{&accountId}},
                   typed(std::move(completionHandler)));
}

std::uint64_t
NVESFoldersApi::listWithCompletionBlock(const Text& accountId, const NVESFoldersApi_ListOptions& options,
                                        NVESRecordCompletion<NVESFoldersResponse> completionHandler) const {
    return perform(operationOf("NVESFoldersApi", "list"), {{&accountId}, &options},
                   typed(std::move(completionHandler)));
}

std::uint64_t NVESTemplatesApi::listTemplatesWithCompletionBlock(
    const Text& accountId, const NVESTemplatesApi_ListTemplatesOptions& options,
    NVESRecordCompletion<NVESEnvelopeTemplateResults> completionHandler) const {
    return perform(operationOf("NVESTemplatesApi", "listTemplates"), {{&accountId}, &options},
                   typed(std::move(completionHandler)));
}

std::uint64_t
NVESTemplatesApi::getWithCompletionBlock(const Text& accountId, const Text& templateId,
                                         NVESRecordCompletion<NVESEnvelopeTemplate> completionHandler) const {
    return perform(operationOf("NVESTemplatesApi", "get"), {{&accountId, &templateId}},
                   typed(std::move(completionHandler)));
}

std::uint64_t NVESTemplatesApi::getDocumentWithCompletionBlock(const Text& accountId, const Text& templateId,
                                                               const Text& documentId,
                                                               NVESFileCompletion completionHandler) const {
    return perform(operationOf("NVESTemplatesApi", "getDocument"), {{&accountId, &templateId, &documentId}},
                   asFile(std::move(completionHandler)));
}

} // namespace norvane
