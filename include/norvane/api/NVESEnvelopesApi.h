#pragma once

#include <norvane/api/NVESOptions.h>
#include <norvane/api/NVESServiceApi.h>

namespace norvane {

struct NVESEnvelopeDefinition;
struct NVESEnvelopesInformation;
struct NVESEnvelopeSummary;
struct NVESRecipients;
struct NVESRecipientViewRequest;
struct NVESTabs;
struct NVESViewUrl;

/// Envelopes, their recipients, tabs and signing pages.
class NVESEnvelopesApi : public NVESServiceApi {
  public:
    explicit NVESEnvelopesApi(std::shared_ptr<NVESApiClient> apiClient = nullptr)
        : NVESServiceApi(std::move(apiClient)) {}

    std::uint64_t
    createEnvelopeWithCompletionBlock(const Text& accountId, const NVESEnvelopeDefinition& envelopeDefinition,
                                      NVESRecordCompletion<NVESEnvelopeSummary> completionHandler) const;
    std::uint64_t
    createEnvelopeWithCompletionBlock(const Text& accountId, const NVESEnvelopeDefinition& envelopeDefinition,
                                      const NVESEnvelopesApi_CreateEnvelopeOptions& options,
                                      NVESRecordCompletion<NVESEnvelopeSummary> completionHandler) const;
    /// Sends the envelope as JSON, its documents from their local files and its signature images as parts of
    /// one request. The files are read while they are sent; one that changes meanwhile fails the request. Of
    /// the given definition, the documents' local addresses and the image tabs' image data are cleared.
    std::uint64_t createOfflineEnvelopeWithCompletionBlock(
        const Text& accountId, NVESEnvelopeDefinition& envelopeDefinition,
        NVESRecordCompletion<NVESEnvelopeSummary> completionHandler) const;
    /// Envelopes that match the options, such as those with the given transaction ids.
    std::uint64_t listStatusChangesWithCompletionBlock(
        const Text& accountId, const NVESEnvelopesApi_ListStatusChangesOptions& options,
        NVESRecordCompletion<NVESEnvelopesInformation> completionHandler) const;
    std::uint64_t
    listRecipientsWithCompletionBlock(const Text& accountId, const Text& envelopeId,
                                      NVESRecordCompletion<NVESRecipients> completionHandler) const;
    std::uint64_t
    createRecipientWithCompletionBlock(const Text& accountId, const Text& envelopeId,
                                       const NVESRecipients& recipients,
                                       const NVESEnvelopesApi_CreateRecipientOptions& options,
                                       NVESRecordCompletion<NVESRecipients> completionHandler) const;
    std::uint64_t
    deleteRecipientsWithCompletionBlock(const Text& accountId, const Text& envelopeId,
                                        const NVESRecipients& recipients,
                                        const NVESEnvelopesApi_DeleteRecipientsOptions& options,
                                        NVESRecordCompletion<NVESRecipients> completionHandler) const;
    std::uint64_t createTabsWithCompletionBlock(const Text& accountId, const Text& envelopeId,
                                                const Text& recipientId, const NVESTabs& tabs,
                                                NVESRecordCompletion<NVESTabs> completionHandler) const;
    std::uint64_t
    createRecipientViewWithCompletionBlock(const Text& accountId, const Text& envelopeId,
                                           const NVESRecipientViewRequest& recipientViewRequest,
                                           NVESRecordCompletion<NVESViewUrl> completionHandler) const;
    /// Sets a recipient's image; `ofType` is the last segment of its address ("signature_image").
    std::uint64_t setImageWithCompletionBlock(const Text& accountId, const Text& envelopeId,
                                              const Text& recipientId, const Data& image, const Text& ofType,
                                              NVESValueCompletion completionHandler) const;
    std::uint64_t getSignatureWithCompletionBlock(const Text& accountId, const Text& recipientId,
                                                  const Text& envelopeId,
                                                  NVESValueCompletion completionHandler) const;
};

} // namespace norvane
