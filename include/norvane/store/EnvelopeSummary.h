#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace norvane {

/// What a list of stored envelopes shows, read without loading them.
struct EnvelopeSummary {
    std::optional<std::string> envelopeId;
    std::optional<std::string> transactionId;
    std::optional<std::string> templateId;
    std::optional<std::string> status;
    std::optional<std::string> emailSubject;
    bool syncPending = false;
    std::int64_t syncPendingUploadRetryCount = 0;
    std::optional<std::string> syncFailureReason;
};

} // namespace norvane
