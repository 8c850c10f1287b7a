#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/signing/NVMNativeSigningEnvelopeHandler.h>
#include <norvane/store/DocumentFiles.h>

namespace norvane {

NVMNativeSigningEnvelopeHandler::NVMNativeSigningEnvelopeHandler(
    std::shared_ptr<NVMEnvelopeDefinition> envelope)
    : envelope_(std::move(envelope)) {}

void NVMNativeSigningEnvelopeHandler::setEnvelope(std::shared_ptr<NVMEnvelopeDefinition> envelope) {
    envelope_ = std::move(envelope);
}

void NVMNativeSigningEnvelopeHandler::clearEnvelope() {
    if (!envelope_) return;
    if (envelope_->documents)
        for (const auto& document : *envelope_->documents)
            if (document->sandboxFilePath) NVM_deleteDocumentWithPath(*document->sandboxFilePath);
    if (envelope_->combinedDocument && envelope_->combinedDocument->sandboxFilePath)
        NVM_deleteDocumentWithPath(*envelope_->combinedDocument->sandboxFilePath);
}

} // namespace norvane
