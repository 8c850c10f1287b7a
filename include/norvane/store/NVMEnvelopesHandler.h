#pragma once

#include <norvane/platform/Result.h>
#include <norvane/store/EnvelopeSummary.h>
#include <norvane/store/FetchRequest.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace norvane {

class ManagedObjectContext;
struct NVMCDDocument;
struct NVMCDEnvelopeDefinition;
struct NVMCDRecipient;
struct NVMCDTab;
struct NVMDocument;
struct NVMEnvelopeDefinition;
struct NVMRecipient;
struct NVMTab;

/// Reads, writes and removes the envelopes of the default store, and posts the notifications of
/// CacheNotifications.h. A draft is an envelope whose status is "created". Any thread may call. Writes take a
/// copy of the records that they are given, work in the background and complete on the store's save queue; a
/// completion may be null. Reads and removals are done when they return; without an open store reads find
/// nothing.
class NVMEnvelopesHandler {
  public:
    using Completion = std::function<void(Failure)>;
    /// The envelope as it is stored then, with documents; null with an error.
    using EnvelopeCompletion = std::function<void(std::shared_ptr<NVMEnvelopeDefinition>, Failure)>;

    NVMEnvelopesHandler() = delete;

    // Writing.

    /// Stores a new envelope under a new transaction identifier and, unless local signers have yet to sign or
    /// it is a draft, puts it in line for upload. Documents come with a file of their own (`sandboxFilePath`)
    /// or with bytes, which are written to a file; the store owns the files from then on.
    static void cacheEnvelope(const NVMEnvelopeDefinition& envelope, Completion completion);
    /// The end of a signing: what is stored under the envelope's identifier goes, except for its files, and
    /// the finished envelope comes, both or neither. On return the given record's `transactionId` is the one
    /// that the envelope waits for upload under: a new one, unless an earlier copy may have been uploaded
    /// already.
    static void finishEnvelope(NVMEnvelopeDefinition& envelope, Completion completion);
    static void updateCachedEnvelope(const NVMEnvelopeDefinition& envelope, Completion completion);
    /// Documents are found by identifier; those that the stored envelope lacks are left out.
    static void
    updateCachedEnvelopeUpdateDocuments(const NVMEnvelopeDefinition& envelope,
                                        const std::vector<std::shared_ptr<NVMDocument>>& documents,
                                        EnvelopeCompletion completion);
    static void updateCachedEnvelopeAddOrUpdateDocument(const NVMEnvelopeDefinition& envelope,
                                                        const NVMDocument& document,
                                                        EnvelopeCompletion completion);
    /// A recipient that changed its kind keeps its tabs; a new one without `recipientId` gets one, in the
    /// given record too.
    static void updateCachedEnvelopeAddOrUpdateRecipient(const NVMEnvelopeDefinition& envelope,
                                                         const std::shared_ptr<NVMRecipient>& recipient,
                                                         EnvelopeCompletion completion);
    static void updateCachedEnvelopeRemoveRecipient(const NVMEnvelopeDefinition& envelope,
                                                    const NVMRecipient& recipient,
                                                    EnvelopeCompletion completion);
    /// Within the list of in-person signers, signers or carbon copies; in others nothing moves.
    static void updateCachedEnvelopeMoveRecipient(const NVMEnvelopeDefinition& envelope,
                                                  const NVMRecipient& recipient, std::size_t from,
                                                  std::size_t to, EnvelopeCompletion completion);
    /// A new tab must be of a kind that stands in a list of its own; radios and formulas are not added.
    static void updateSignerAddOrUpdateTab(const NVMRecipient& signer, const std::shared_ptr<NVMTab>& tab,
                                           EnvelopeCompletion completion);
    static void updateSignerRemoveTab(const NVMRecipient& signer, const NVMTab& tab,
                                      EnvelopeCompletion completion);
    /// Records a failed upload; an unknown identifier is no matter.
    static void updateCachedEnvelopeWithId(const std::string& envelopeId, const std::string& syncFailReason);
    static void saveDefaultContext();

    // Reading. Envelopes come without documents unless told, in the order in which they were first stored.

    static std::vector<std::shared_ptr<NVMEnvelopeDefinition>> cachedEnvelopes(); ///< no drafts
    static std::vector<std::shared_ptr<NVMEnvelopeDefinition>> cachedDraftEnvelopes();
    static std::vector<std::shared_ptr<NVMEnvelopeDefinition>> cachedDraftEnvelopesWithDocuments();
    /// With documents, drafts too; null when there is none.
    static std::shared_ptr<NVMEnvelopeDefinition> cachedEnvelopeById(const std::string& envelopeId);
    static std::vector<std::string> cachedEnvelopeIds(); ///< no drafts
    /// Drafts too, and damaged ones as they stand, so that they can be removed.
    static std::vector<EnvelopeSummary> cachedEnvelopeSummaries();
    /// One by one, without holding them all: `take` is called on this thread, in their order, with no lock of
    /// the store held, until it answers no. What changes meanwhile may show or not. Damaged ones are left
    /// out; then the first of them is the error, after the last that is sound.
    static Failure eachCachedEnvelopeSummary(const std::function<bool(const EnvelopeSummary&)>& take);
    static std::size_t cachedDraftEnvelopeCount();
    static FetchRequest nonDraftCachedEnvelopesFetchRequest();
    static FetchRequest draftCachedEnvelopesFetchRequest();
    /// {"envelopeId"} of each envelope but drafts.
    static std::vector<Dictionary> fetchNonDraftCachedEnvelopesWithPropertyEnvelopeId();

    // Finding: the first match, or null.

    static std::shared_ptr<NVMCDEnvelopeDefinition> findEnvelopeWithId(const std::string& envelopeId,
                                                                       const ManagedObjectContext& context);
    static std::shared_ptr<NVMCDDocument> findDocumentWithId(const std::string& documentId,
                                                             const ManagedObjectContext& context);
    static std::shared_ptr<NVMCDDocument> findDocumentWithId(const std::string& documentId,
                                                             const std::string& envelopeId,
                                                             const ManagedObjectContext& context);
    static std::shared_ptr<NVMCDRecipient> findRecipientWithId(const std::string& recipientId,
                                                               const ManagedObjectContext& context);
    static std::shared_ptr<NVMCDTab> findTabWithId(const std::string& tabId,
                                                   const ManagedObjectContext& context);
    static std::vector<std::shared_ptr<NVMCDTab>> findTabsWithDocumentId(const std::string& documentId,
                                                                         const ManagedObjectContext& context);

    // Removing. Files go with their envelope unless documents are preserved; that its caching was enabled
    // stays on record. An envelope that is damaged can be removed too.

    static void removeCachedEnvelopeWithId(const std::string& envelopeId);
    static void removeCachedEnvelopeWithId(const std::string& envelopeId, bool preserveDocuments);
    static void removeCachedEnvelopeWithId(const std::string& envelopeId, bool preserveDocuments,
                                           ManagedObjectContext& context);
    /// With `withTabs`, every tab of that document identifier goes too, whatever the envelope.
    static void removeCachedDocumentWithId(const std::string& documentId, const std::string& envelopeId,
                                           bool withTabs);
    /// Drafts too.
    static void removeCachedEnvelopes();

    // Uploading; see NVMEnvelopeSynchronizer.

    static void syncEnvelopeWithId(const std::string& envelopeId);
    static void syncEnvelopes();
};

} // namespace norvane
