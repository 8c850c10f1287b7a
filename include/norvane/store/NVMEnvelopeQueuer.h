#pragma once

#include <norvane/platform/Result.h>

#include <functional>
#include <memory>
#include <string>

namespace norvane {

class EnvelopeUploader;
class ObjectStore;
struct NVMCDEnvelopeDefinition;

/// Turns stored envelopes into pending ones and uploads one.
class NVMEnvelopeQueuer {
  public:
    NVMEnvelopeQueuer() = delete;

    /// Sets the status, forgets the envelope identifier and converts. Changes the object only.
    static void makeRemoteEnvelope(NVMCDEnvelopeDefinition& envelope, const std::string& withStatus);
    /// Gives a new transaction identifier and puts the envelope in line for upload, unless local signers have
    /// yet to sign; then the identifier is all that it gets, as envelope identifier too. Changes the object
    /// only.
    static void convertToPendingEnvelope(NVMCDEnvelopeDefinition& envelope);
    /// The same with an identifier that was chosen before.
    static void convertToPendingEnvelope(NVMCDEnvelopeDefinition& envelope, const std::string& transactionId);

    /// Uploads the stored envelope, unless an earlier attempt at it, whose outcome was not known, turns out
    /// to have succeeded. The completion gets nothing once the service has the envelope: the fact is on disk
    /// then, and the envelope's stored `envelopeId` is the service's. Completes once, on any thread, also
    /// inside the call.
    static void syncRemoteEnvelope(const std::shared_ptr<NVMCDEnvelopeDefinition>& envelope,
                                   const std::shared_ptr<ObjectStore>& store,
                                   const std::shared_ptr<EnvelopeUploader>& uploader,
                                   std::function<void(Failure)> withCompletion);
};

} // namespace norvane
