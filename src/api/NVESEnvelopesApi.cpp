#include "src/api/OperationTable.h"

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
    return perform(operationOf("NVESEnvelopesApi", "createEnvelope"),
                   {{&accountId}, &options, writeRecord(envelopeDefinition)},
                   typed(std::move(completionHandler)));
}

std::uint64_t NVESEnvelopesApi::createOfflineEnvelopeWithCompletionBlock(
    const Text& accountId, NVESEnvelopeDefinition& envelopeDefinition,
    NVESRecordCompletion<NVESEnvelopeSummary> completionHandler) const {
    return performOfflineUpload(operationOf("NVESEnvelopesApi", "createOfflineEnvelope"), accountId,
                                envelopeDefinition, typed(std::move(completionHandler)));
}

std::uint64_t NVESEnvelopesApi::listStatusChangesWithCompletionBlock(
    const Text& accountId, const NVESEnvelopesApi_ListStatusChangesOptions& options,
    NVESRecordCompletion<NVESEnvelopesInformation> completionHandler) const {
    return perform(operationOf("NVESEnvelopesApi", "listStatusChanges"), {{&accountId}, &options},
                   typed(std::move(completionHandler)));
}

std::uint64_t NVESEnvelopesApi::listRecipientsWithCompletionBlock(
    const Text& accountId, const Text& envelopeId,
    NVESRecordCompletion<NVESRecipients> completionHandler) const {
    return perform(operationOf("NVESEnvelopesApi", "listRecipients"), {{&accountId, &envelopeId}},
                   typed(std::move(completionHandler)));
}

std::uint64_t NVESEnvelopesApi::createRecipientWithCompletionBlock(
    const Text& accountId, const Text& envelopeId, const NVESRecipients& recipients,
    const NVESEnvelopesApi_CreateRecipientOptions& options,
    NVESRecordCompletion<NVESRecipients> completionHandler) const {
    return perform(operationOf("NVESEnvelopesApi", "createRecipient"),
                   {{&accountId, &envelopeId}, &options, writeRecord(recipients)},
                   typed(std::move(completionHandler)));
}

std::uint64_t NVESEnvelopesApi::deleteRecipientsWithCompletionBlock(
    const Text& accountId, const Text& envelopeId, const NVESRecipients& recipients,
    const NVESEnvelopesApi_DeleteRecipientsOptions& options,
    NVESRecordCompletion<NVESRecipients> completionHandler) const {
    return perform(operationOf("NVESEnvelopesApi", "deleteRecipients"),
                   {{&accountId, &envelopeId}, &options, writeRecord(recipients)},
                   typed(std::move(completionHandler)));
}

std::uint64_t
NVESEnvelopesApi::createTabsWithCompletionBlock(const Text& accountId, const Text& envelopeId,
                                                const Text& recipientId, const NVESTabs& tabs,
                                                NVESRecordCompletion<NVESTabs> completionHandler) const {
    return perform(operationOf("NVESEnvelopesApi", "createTabs"),
                   {.path = {&accountId, &envelopeId, &recipientId}, .body = writeRecord(tabs)},
                   typed(std::move(completionHandler)));
}

std::uint64_t NVESEnvelopesApi::createRecipientViewWithCompletionBlock(
    const Text& accountId, const Text& envelopeId, const NVESRecipientViewRequest& recipientViewRequest,
    NVESRecordCompletion<NVESViewUrl> completionHandler) const {
    return perform(operationOf("NVESEnvelopesApi", "createRecipientView"),
                   {.path = {&accountId, &envelopeId}, .body = writeRecord(recipientViewRequest)},
                   typed(std::move(completionHandler)));
}

std::uint64_t NVESEnvelopesApi::setImageWithCompletionBlock(const Text& accountId, const Text& envelopeId,
                                                            const Text& recipientId, const Data& image,
                                                            const Text& ofType,
                                                            NVESValueCompletion completionHandler) const {
    const NVESRequest request = makeRequest(operationOf("NVESEnvelopesApi", "setImage"),
                                            {{&accountId, &envelopeId, &recipientId, &ofType}});
    return apiClient()->imageWithCompletionBlock(request, image, untyped(std::move(completionHandler)));
}

std::uint64_t NVESEnvelopesApi::getSignatureWithCompletionBlock(const Text& accountId,
                                                                const Text& recipientId,
                                                                const Text& envelopeId,
                                                                NVESValueCompletion completionHandler) const {
    return perform(operationOf("NVESEnvelopesApi", "getSignature"), {{&accountId, &envelopeId, &recipientId}},
                   untyped(std::move(completionHandler)));
}

} // namespace norvane
