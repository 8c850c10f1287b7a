#include <norvane/platform/Platform.h>
#include <norvane/store/NVMCDEnvelopes.h>

namespace norvane {

NORVANE_TABLE(NVMCDTemplateRole, NVMCD_TEMPLATE_ROLE_FIELDS)

#define NVMCD_ENVELOPE_DEFINITION_TABLE(FIELD, R)                                                            \
    NVMCD_ENVELOPE_DEFINITION_FIELDS(FIELD, R) NVMCD_ENVELOPE_DEFINITION_ANSWERS(FIELD, R)
NORVANE_TABLE(NVMCDEnvelopeDefinition, NVMCD_ENVELOPE_DEFINITION_TABLE)

std::optional<Dictionary> NVMCDEnvelopeDefinition::userInfo() const {
    if (envelopeId) return Dictionary{{"envelopeId", *envelopeId}};
    if (transactionId) return Dictionary{{"transactionId", *transactionId}};
    return std::nullopt;
}

std::int64_t NVMCDEnvelopeDefinition::pendingSyncRetriesCount() const {
    return static_cast<std::int64_t>(syncPendingUploadRetryCount.value_or(0));
}

void NVMCDEnvelopeDefinition::saveAdditionalSynchronizationAttributesInEnvelope() {
    if (!isAvailableRemotely()) {
        sentDateTime = Platform::current().clock->now();
        envelopeId = transactionId;
        lastModifiedDateTime = sentDateTime;
    }
    syncPending = 1;
    syncPendingUploadRetryCount = 0;
}

void NVMCDEnvelopeDefinition::saveSyncFailueReason(const std::string& reason) {
    lastModifiedDateTime = Platform::current().clock->now();
    syncPending = 1;
    syncFailureReason = reason;
    syncPendingUploadRetryCount = static_cast<double>(pendingSyncRetriesCount() + 1);
}

} // namespace norvane
