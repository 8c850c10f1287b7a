#include "src/store/StoreErrorOf.h"
#include "src/store/UploadAttempts.h"

#include <norvane/api/NVESEnvelopes.h>
#include <norvane/model/mapping/EnvelopeMapping.h>
#include <norvane/platform/Platform.h>
#include <norvane/store/DocumentFiles.h>
#include <norvane/store/EnvelopeUploader.h>
#include <norvane/store/NVMCDEnvelopes.h>
#include <norvane/store/NVMEnvelopeQueuer.h>

namespace norvane {

namespace {

bool isTrue(const field::Number& number) { return number.value_or(0) != 0; }

Failure verifyDocuments(const NVMCDEnvelopeDefinition& envelope) {
    if (!envelope.documents) return std::nullopt;
    for (const auto& document : *envelope.documents) {
        const std::string name = document->name.value_or(document->documentId.value_or(""));
        if (auto error =
                NVM_verifyDocumentWithPath(document->sandboxFilePath.value_or(""), document->_sha256, name))
            return error;
    }
    return std::nullopt;
}

/// One attempt at one envelope, kept alive by the request that is under way.
class Upload : public std::enable_shared_from_this<Upload> {
  public:
    Upload(std::shared_ptr<NVMCDEnvelopeDefinition> envelope, std::shared_ptr<ObjectStore> store,
           std::shared_ptr<EnvelopeUploader> uploader, std::function<void(Failure)> completion)
        : envelope_(std::move(envelope))
        , store_(std::move(store))
        , uploader_(std::move(uploader))
        , completion_(std::move(completion))
        , transactionId_(envelope_->transactionId.value_or("")) {}

    void start() {
        const auto attempt = UploadAttempts(*store_).find(transactionId_);
        if (!attempt) return completion_(attempt.error());
        if (!*attempt) return send();
        if ((*attempt)->envelopeId) return succeed(*(*attempt)->envelopeId);
        askForOutcome();
    }

  private:
    void askForOutcome() {
        uploader_->lookUp({transactionId_}, [self = shared_from_this()](
                                                const Result<std::map<std::string, std::string>>& found) {
            if (!found) return self->completion_(found.error());
            const auto envelopeId = found->find(self->transactionId_);
            if (envelopeId == found->end()) return self->send();
            self->accept(envelopeId->second);
        });
    }

    void send() {
        if (auto error = verifyDocuments(*envelope_)) return completion_(error);
        if (auto error = UploadAttempts(*store_).begin(transactionId_, Platform::current().clock->now()))
            return completion_(error);
        uploader_->upload(
            createEnvelopeRequestForEnvelope(*envelope_),
            [self = shared_from_this()](const EnvelopeUploader::Answer& answer) { self->answered(answer); });
    }

    void answered(const EnvelopeUploader::Answer& answer) {
        if (answer.envelopeId) return accept(*answer.envelopeId);
        // When this cannot be written the attempt stays unknown, and the next run asks: no harm is done.
        if (answer.isSettled) static_cast<void>(UploadAttempts(*store_).refused(transactionId_));
        completion_(answer.error);
    }

    void accept(const std::string& envelopeId) {
        if (auto error = UploadAttempts(*store_).accepted(transactionId_, envelopeId))
            return completion_(error);
        succeed(envelopeId);
    }

    void succeed(const std::string& envelopeId) {
        envelope_->envelopeId = envelopeId;
        completion_(std::nullopt);
    }

    const std::shared_ptr<NVMCDEnvelopeDefinition> envelope_;
    const std::shared_ptr<ObjectStore> store_;
    const std::shared_ptr<EnvelopeUploader> uploader_;
    const std::function<void(Failure)> completion_;
    const std::string transactionId_;
};

} // namespace

void NVMEnvelopeQueuer::makeRemoteEnvelope(NVMCDEnvelopeDefinition& envelope, const std::string& withStatus) {
    envelope.status = withStatus;
    envelope.envelopeId.reset();
    convertToPendingEnvelope(envelope);
}

void NVMEnvelopeQueuer::convertToPendingEnvelope(NVMCDEnvelopeDefinition& envelope) {
    convertToPendingEnvelope(envelope, Platform::current().random->uuidString());
}

void NVMEnvelopeQueuer::convertToPendingEnvelope(NVMCDEnvelopeDefinition& envelope,
                                                 const std::string& transactionId) {
    envelope.transactionId = transactionId;
    const bool incomplete = isTrue(envelope.hasIncompleteLocalSigners);
    const bool signedHere = envelope.isRemoteEnvelopeSignedByAtLeastOneSignerInCurrentSession();
    if (incomplete && !(envelope.isAvailableRemotely() && signedHere)) {
        // Without an identifier nobody could find, finish or remove it.
        envelope.envelopeId = transactionId;
        return;
    }
    if (envelope.status != "created") envelope.status = incomplete ? "delivered" : "completed";
    envelope.saveAdditionalSynchronizationAttributesInEnvelope();
}

void NVMEnvelopeQueuer::syncRemoteEnvelope(const std::shared_ptr<NVMCDEnvelopeDefinition>& envelope,
                                           const std::shared_ptr<ObjectStore>& store,
                                           const std::shared_ptr<EnvelopeUploader>& uploader,
                                           std::function<void(Failure)> withCompletion) {
    std::make_shared<Upload>(envelope, store, uploader, std::move(withCompletion))->start();
}

} // namespace norvane
