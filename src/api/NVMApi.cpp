#include <norvane/api/NVESAccounts.h>
#include <norvane/api/NVESAccountsApi.h>
#include <norvane/api/NVESAuthenticationApi.h>
#include <norvane/api/NVESConsumerDisclosureApi.h>
#include <norvane/api/NVESEnvelopes.h>
#include <norvane/api/NVESEnvelopesApi.h>
#include <norvane/api/NVESFoldersApi.h>
#include <norvane/api/NVESRecipients.h>
#include <norvane/api/NVESTabs.h>
#include <norvane/api/NVESTemplates.h>
#include <norvane/api/NVESTemplatesApi.h>
#include <norvane/api/NVESUsersApi.h>
#include <norvane/api/NVESViews.h>
#include <norvane/api/NVMApi.h>
#include <norvane/platform/Json.h>
#include <norvane/sdk/Errors.h>
#include <norvane/sdk/NVMAccount.h>
#include <norvane/sdk/NVMCredentials.h>

#include <algorithm>

namespace norvane {
namespace {

constexpr const char* kAuthenticationHeader = "X-Norvane-Authentication";
constexpr const char* kAuthorizationHeader = "Authorization";

Dictionary headersOf(const NVMAccount& account) {
    Dictionary headers{{kAuthenticationHeader, NVMApi::norvaneAuthStringForAccount(account)}};
    if (account.authenticationMethod == NVMAuthenticationMethodAccessToken)
        headers.emplace(kAuthorizationHeader, NVMApi::authorizationStringForAccount(account));
    return headers;
}

/// Carries out `operation(service, account)` with a service object of the stored account. `completion` may
/// take any result.
template <class Service, class Completion, class Run>
std::uint64_t withService(Completion completion, Run operation) {
    const auto account = NVMCredentials::primaryCredentials();
    if (!account || !account->host)
        return NVESApiClient::refuseRequest(
            NVM_errorUserNotLoggedIn(),
            [completion = std::move(completion)](const NVESResult&, const auto& error) {
                if (completion) completion({}, error);
            });
    Service service(NVESApiClient::withBaseURL(*account->host));
    for (const auto& [name, value] : headersOf(*account))
        service.addHeader(*value.asString(), name);
    return operation(service, *account, std::move(completion));
}

} // namespace

std::uint64_t NVMApi::loginWithUserId(const std::string& userId, const std::string& password,
                                      const std::string& integratorKey, const Url& host,
                                      Completion<NVESLoginInformation> completion) {
    NVESAuthenticationApi service(NVESApiClient::withBaseURL(host));
    service.addHeader("{\"Username\":" + writeJson(userId) + ",\"Password\":" + writeJson(password) +
                          ",\"IntegratorKey\":" + writeJson(integratorKey) + "}",
                      kAuthenticationHeader);
    NVESAuthenticationApi_LoginOptions options;
    options.apiPassword = "true";
    options.includeAccountIdGuid = "true";
    return service.loginWithCompletionBlock(options, std::move(completion));
}

std::uint64_t NVMApi::getAccountForAccountId(const Text& accountId,
                                             Completion<NVESAccountInformation> completion) {
    return withService<NVESAccountsApi>(std::move(completion), [&](auto& service, auto&, auto handler) {
        return service.getAccountInformationWithCompletionBlock(accountId, {}, std::move(handler));
    });
}

std::uint64_t NVMApi::getAccountSettingsForAccountId(const Text& accountId,
                                                     Completion<NVESAccountSettingsInformation> completion) {
    return withService<NVESAccountsApi>(std::move(completion), [&](auto& service, auto&, auto handler) {
        return service.listSettingsWithCompletionBlock(accountId, std::move(handler));
    });
}

std::uint64_t NVMApi::getUserSettingsForAccountId(const Text& accountId, const Text& userId,
                                                  Completion<NVESUserSettingsInformation> completion) {
    return withService<NVESUsersApi>(std::move(completion), [&](auto& service, auto&, auto handler) {
        return service.getSettingsWithCompletionBlock(accountId, userId, std::move(handler));
    });
}

std::uint64_t NVMApi::getConsumerDisclosureForAccountId(const Text& accountId,
                                                        Completion<NVESConsumerDisclosure> completion) {
    return withService<NVESConsumerDisclosureApi>(
        std::move(completion), [&](auto& service, auto&, auto handler) {
            return service.getConsumerDisclosureWithCompletionBlock(accountId, std::move(handler));
        });
}

std::uint64_t NVMApi::getFoldersWithOptions(const NVESFoldersApi_ListOptions& options,
                                            Completion<NVESFoldersResponse> completion) {
    return withService<NVESFoldersApi>(
        std::move(completion), [&](auto& service, auto& account, auto handler) {
            return service.listWithCompletionBlock(account.accountId, options, std::move(handler));
        });
}

std::uint64_t NVMApi::getTemplatesWithCompletion(Completion<NVESEnvelopeTemplateResults> completion) {
    return getTemplatesWithOptions({}, std::move(completion));
}

std::uint64_t NVMApi::getTemplatesWithOptions(const NVESTemplatesApi_ListTemplatesOptions& options,
                                              Completion<NVESEnvelopeTemplateResults> completion) {
    return withService<NVESTemplatesApi>(
        std::move(completion), [&](auto& service, auto& account, auto handler) {
            return service.listTemplatesWithCompletionBlock(account.accountId, options, std::move(handler));
        });
}

std::uint64_t NVMApi::getTemplateWithId(const Text& templateId, Completion<NVESEnvelopeTemplate> completion) {
    return withService<NVESTemplatesApi>(
        std::move(completion), [&](auto& service, auto& account, auto handler) {
            return service.getWithCompletionBlock(account.accountId, templateId, std::move(handler));
        });
}

std::uint64_t NVMApi::getDocumentForTemplateId(const Text& templateId, const Text& documentId,
                                               NVESFileCompletion completion) {
    return withService<NVESTemplatesApi>(
        std::move(completion), [&](auto& service, auto& account, auto handler) {
            return service.getDocumentWithCompletionBlock(account.accountId, templateId, documentId,
                                                          std::move(handler));
        });
}

std::uint64_t NVMApi::getCombinedDocumentForTemplateId(const Text& templateId,
                                                       NVESFileCompletion completion) {
    return getDocumentForTemplateId(templateId, "combined", std::move(completion));
}

std::uint64_t
NVMApi::createEnvelopeWithEnvelopeDefinition(const NVESEnvelopeDefinition& envelopeDefinition,
                                             Completion<NVESEnvelopeSummary> completionHandler) {
    return withService<NVESEnvelopesApi>(std::move(completionHandler),
                                         [&](auto& service, auto& account, auto handler) {
                                             return service.createEnvelopeWithCompletionBlock(
                                                 account.accountId, envelopeDefinition, std::move(handler));
                                         });
}

std::uint64_t
NVMApi::createOfflineEnvelopeWithEnvelopeDefinition(NVESEnvelopeDefinition& envelopeDefinition,
                                                    Completion<NVESEnvelopeSummary> completionHandler) {
    envelopeDefinition.DisableResponsiveDocument = "true";
    return withService<NVESEnvelopesApi>(std::move(completionHandler),
                                         [&](auto& service, auto& account, auto handler) {
                                             return service.createOfflineEnvelopeWithCompletionBlock(
                                                 account.accountId, envelopeDefinition, std::move(handler));
                                         });
}

std::uint64_t NVMApi::listStatusChangesWithOptions(const NVESEnvelopesApi_ListStatusChangesOptions& options,
                                                   Completion<NVESEnvelopesInformation> completionHandler) {
    return withService<NVESEnvelopesApi>(std::move(completionHandler), [&](auto& service, auto& account,
                                                                           auto handler) {
        return service.listStatusChangesWithCompletionBlock(account.accountId, options, std::move(handler));
    });
}

std::uint64_t NVMApi::getRecipientsForEnvelopeWithEnvelopeId(const Text& envelopeId,
                                                             Completion<NVESRecipients> completionHandler) {
    return withService<NVESEnvelopesApi>(std::move(completionHandler), [&](auto& service, auto& account,
                                                                           auto handler) {
        return service.listRecipientsWithCompletionBlock(account.accountId, envelopeId, std::move(handler));
    });
}

std::uint64_t NVMApi::addRecipientsToEnvelopeWithId(const Text& envelopeId, const NVESRecipients& recipients,
                                                    const NVESEnvelopesApi_CreateRecipientOptions& options,
                                                    Completion<NVESRecipients> completionHandler) {
    return withService<NVESEnvelopesApi>(
        std::move(completionHandler), [&](auto& service, auto& account, auto handler) {
            return service.createRecipientWithCompletionBlock(account.accountId, envelopeId, recipients,
                                                              options, std::move(handler));
        });
}

std::uint64_t
NVMApi::deleteRecipientsFromEnvelopeWithId(const Text& envelopeId, const NVESRecipients& recipients,
                                           const NVESEnvelopesApi_DeleteRecipientsOptions& options,
                                           Completion<NVESRecipients> completionHandler) {
    return withService<NVESEnvelopesApi>(
        std::move(completionHandler), [&](auto& service, auto& account, auto handler) {
            return service.deleteRecipientsWithCompletionBlock(account.accountId, envelopeId, recipients,
                                                               options, std::move(handler));
        });
}

std::uint64_t NVMApi::addTabsToRecipientWithId(const Text& recipientId, const Text& forEnvelopeId,
                                               const NVESTabs& tabs, Completion<NVESTabs> completionHandler) {
    return withService<NVESEnvelopesApi>(
        std::move(completionHandler), [&](auto& service, auto& account, auto handler) {
            return service.createTabsWithCompletionBlock(account.accountId, forEnvelopeId, recipientId, tabs,
                                                         std::move(handler));
        });
}

std::uint64_t NVMApi::getRecipientViewForRecipient(const NVESRecipientViewRequest& recipient,
                                                   const Text& inEnvelopeWithId,
                                                   Completion<NVESViewUrl> completionHandler) {
    return withService<NVESEnvelopesApi>(
        std::move(completionHandler), [&](auto& service, auto& account, auto handler) {
            return service.createRecipientViewWithCompletionBlock(account.accountId, inEnvelopeWithId,
                                                                  recipient, std::move(handler));
        });
}

std::uint64_t NVMApi::setImageToRecipientWithId(const Text& recipientId, const Text& forEnvelopeId,
                                                const Data& image, const Text& ofType,
                                                NVESValueCompletion completionHandler) {
    return withService<NVESEnvelopesApi>(
        std::move(completionHandler), [&](auto& service, auto& account, auto handler) {
            return service.setImageWithCompletionBlock(account.accountId, forEnvelopeId, recipientId, image,
                                                       ofType, std::move(handler));
        });
}

std::uint64_t NVMApi::getSignatureForRecipientWithId(const Text& recipientId, const Text& forEnvelopeId,
                                                     NVESValueCompletion completionHandler) {
    return withService<NVESEnvelopesApi>(
        std::move(completionHandler), [&](auto& service, auto& account, auto handler) {
            return service.getSignatureWithCompletionBlock(account.accountId, recipientId, forEnvelopeId,
                                                           std::move(handler));
        });
}

std::uint64_t NVMApi::callOperation(const NVESOperation& operation, NVESOperationArguments arguments,
                                    NVESCompletion completionHandler) {
    const auto call = [&](auto& service, auto& account, auto handler) {
        const auto required = operation.requiredParameters();
        if (account.accountId && std::find(required.begin(), required.end(), "accountId") != required.end())
            arguments.parameters.emplace("accountId", *account.accountId);
        return service.callOperation(operation, arguments, std::move(handler));
    };
    return withService<NVESAccountsApi>(std::move(completionHandler), call);
}

Dictionary NVMApi::setUpHeaders() {
    const auto account = NVMCredentials::primaryCredentials();
    return account ? headersOf(*account) : Dictionary();
}

std::string NVMApi::norvaneAuthStringForAccount(const NVMAccount& account) {
    const std::string integratorKey =
        "\"IntegratorKey\":\"" + account.integratorKey.value_or("(null)") + "\"}";
    if (account.authenticationMethod == NVMAuthenticationMethodAccessToken) return "{" + integratorKey;
    return "{\"Username\":\"" + account.userId.value_or("(null)") + "\",\"Password\":\"" +
           account.apiPassword.value_or("(null)") + "\"," + integratorKey;
}

std::string NVMApi::authorizationStringForAccount(const NVMAccount& account) {
    return "Bearer " + account.accessToken.value_or("(null)");
}

} // namespace norvane
