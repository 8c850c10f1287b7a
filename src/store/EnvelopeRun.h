#pragma once

#include <norvane/platform/Platform.h>
#include <norvane/store/NVMCDEnvelopes.h>
#include <norvane/store/NVMEnvelopeSynchronizer.h>

#include <string>

namespace norvane {

/// One envelope of a run: what its operations hand to one another.
struct NVMEnvelopeSynchronizer::EnvelopeRun {
    EnvelopeRun(const ManagedObjectID& objectID, const NVMCDEnvelopeDefinition& envelope,
                std::size_t cancellations)
        : id(objectID)
        , cancellationsAtStart(cancellations)
        , recordId(transactionIdPreferredOverEnvelopeIdForEnvelope(envelope))
        , startedInfo(userInfoWithEnvelopeIdTemplateIdTransactionIdForEnvelope(envelope))
        , transactionId(envelope.transactionId.value_or(""))
        , userInfo(NVMRecordCacher::userInfoForRecord(&envelope, recordId)) {}

    /// The envelope's key among those of the run: a fresh one where it has no transaction identifier.
    std::string startedKey() const {
        return transactionId.empty() ? Platform::current().random->uuidString() : transactionId;
    }

    const ManagedObjectID id;
    const std::size_t cancellationsAtStart; ///< a cancel since then has ended the run
    const std::string recordId;
    const Dictionary startedInfo;
    const std::string transactionId;
    Dictionary userInfo;
    Failure error;
    bool isGone = false; ///< removed, or uploaded by another process, before its turn came
};

} // namespace norvane
