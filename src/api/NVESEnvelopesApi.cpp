#include "src/api/OfflineEnvelopeFiles.h"
#include "src/api/Operation.h"

#include <norvane/api/NVESEnvelopes.h>
#include <norvane/api/NVESEnvelopesApi.h>
#include <norvane/api/NVESRecipients.h>
#include <norvane/api/NVESTabs.h>
#include <norvane/api/NVESViews.h>
#include <norvane/api/RecordJson.h>

namespace norvane {

std::uint64_t NVESEnvelopesApi::createEnvelopeWithCompletionBlock(
    const Text& accountId, const NVESEnvelopeDefinition& envelopeDefinition,
    NVESRecordCompletion<NVESEnvelopeSummary> completionHandler) const {
    return createEnvelopeWithCompletionBlock(accountId, envelopeDefinition, {}, std::move(completionHandler));
}

std::uint64_t NVESEnvelopesApi::createEnvelopeWithCompletionBlock(
    const Text& accountId, const NVESEnvelopeDefinition& envelopeDefinition,
    const NVESEnvelopesApi_CreateEnvelopeOptions& options,
    NVESRecordCompletion<NVESEnvelopeSummary> completionHandler) const {
    constexpr Operation operation{"createEnvelope", "POST", "/v2/accounts/{accountId}/envelopes",
                                  "NVESEnvelopeSummary"};
    return perform(operation, {{&accountId}, &options.type(), &options, writeRecord(envelopeDefinition)},
                   typed(std::move(completionHandler)));
}

std::uint64_t NVESEnvelopesApi::createOfflineEnvelopeWithCompletionBlock(
    const Text& accountId, NVESEnvelopeDefinition& envelopeDefinition,
    NVESRecordCompletion<NVESEnvelopeSummary> completionHandler) const {
    constexpr Operation operation{"createOfflineEnvelope", "POST", "/v2/accounts/{accountId}/envelopes",
                                  "NVESEnvelopeSummary", "multipart/form-data"};
    NVESRequest request = makeRequest(operation, {{&accountId}});
    request.files = takeOfflineEnvelopeFiles(envelopeDefinition);
    // The service knows the part by this name.
    request.formParams.emplace("(null)", writeRecord(envelopeDefinition));
    return apiClient()->envelopeCreateWithCompletionBlock(request, typed(std::move(completionHandler)));
}

std::uint64_t NVESEnvelopesApi::listStatusChangesWithCompletionBlock(
    const Text& accountId, const NVESEnvelopesApi_ListStatusChangesOptions& options,
    NVESRecordCompletion<NVESEnvelopesInformation> completionHandler) const {
    constexpr Operation operation{"listStatusChanges", "GET", "/v2/accounts/{accountId}/envelopes",
                                  "NVESEnvelopesInformation"};
    return perform(operation, {{&accountId}, &options.type(), &options}, typed(std::move(completionHandler)));
}

std::uint64_t NVESEnvelopesApi::listRecipientsWithCompletionBlock(
    const Text& accountId, const Text& envelopeId,
    NVESRecordCompletion<NVESRecipients> completionHandler) const {
    constexpr Operation operation{"listRecipients", "GET",
                                  "/v2/accounts/{accountId}/envelopes/{envelopeId}/recipients",
                                  "NVESRecipients"};
    return perform(operation, {{&accountId, &envelopeId}}, typed(std::move(completionHandler)));
}

std::uint64_t NVESEnvelopesApi::createRecipientWithCompletionBlock(
    const Text& accountId, const Text& envelopeId, const NVESRecipients& recipients,
    const NVESEnvelopesApi_CreateRecipientOptions& options,
    NVESRecordCompletion<NVESRecipients> completionHandler) const {
    constexpr Operation operation{"createRecipient", "POST",
                                  "/v2/accounts/{accountId}/envelopes/{envelopeId}/recipients",
                                  "NVESRecipients"};
    return perform(operation, {{&accountId, &envelopeId}, &options.type(), &options, writeRecord(recipients)},
                   typed(std::move(completionHandler)));
}

std::uint64_t NVESEnvelopesApi::deleteRecipientsWithCompletionBlock(
    const Text& accountId, const Text& envelopeId, const NVESRecipients& recipients,
    const NVESEnvelopesApi_DeleteRecipientsOptions& options,
    NVESRecordCompletion<NVESRecipients> completionHandler) const {
    constexpr Operation operation{"deleteRecipients", "DELETE",
                                  "/v2/accounts/{accountId}/envelopes/{envelopeId}/recipients",
                                  "NVESRecipients"};
    return perform(operation, {{&accountId, &envelopeId}, &options.type(), &options, writeRecord(recipients)},
                   typed(std::move(completionHandler)));
}

std::uint64_t
NVESEnvelopesApi::createTabsWithCompletionBlock(const Text& accountId, const Text& envelopeId,
                                                const Text& recipientId, const NVESTabs& tabs,
                                                NVESRecordCompletion<NVESTabs> completionHandler) const {
    constexpr Operation operation{
        "createTabs", "POST", "/v2/accounts/{accountId}/envelopes/{envelopeId}/recipients/{recipientId}/tabs",
        "NVESTabs"};
    return perform(operation, {.path = {&accountId, &envelopeId, &recipientId}, .body = writeRecord(tabs)},
                   typed(std::move(completionHandler)));
}

std::uint64_t NVESEnvelopesApi::createRecipientViewWithCompletionBlock(
    const Text& accountId, const Text& envelopeId, const NVESRecipientViewRequest& recipientViewRequest,
    NVESRecordCompletion<NVESViewUrl> completionHandler) const {
    constexpr Operation operation{"createRecipientView", "POST",
                                  "/v2/accounts/{accountId}/envelopes/{envelopeId}/views/recipient",
                                  "NVESViewUrl"};
    return perform(operation, {.path = {&accountId, &envelopeId}, .body = writeRecord(recipientViewRequest)},
                   typed(std::move(completionHandler)));
}

std::uint64_t NVESEnvelopesApi::setImageWithCompletionBlock(const Text& accountId, const Text& envelopeId,
                                                            const Text& recipientId, const Data& image,
                                                            const Text& ofType,
                                                            NVESValueCompletion completionHandler) const {
    constexpr Operation operation{
        "setImage", "PUT",
        "/v2/accounts/{accountId}/envelopes/{envelopeId}/recipients/{recipientId}/{imageType}", "",
        "image/png"};
    const NVESRequest request = makeRequest(operation, {{&accountId, &envelopeId, &recipientId, &ofType}});
    return apiClient()->imageWithCompletionBlock(request, image, untyped(std::move(completionHandler)));
}

std::uint64_t NVESEnvelopesApi::getSignatureWithCompletionBlock(const Text& accountId,
                                                                const Text& recipientId,
                                                                const Text& envelopeId,
                                                                NVESValueCompletion completionHandler) const {
    constexpr Operation operation{
        "getSignature", "GET",
        "/v2/accounts/{accountId}/envelopes/{envelopeId}/recipients/{recipientId}/signature", "NSObject"};
    return perform(operation, {{&accountId, &envelopeId, &recipientId}},
                   untyped(std::move(completionHandler)));
}

} // namespace norvane
