#pragma once

#include <norvane/platform/Result.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace norvane {

struct NVESEnvelopeDefinition;

/// The service's side of an upload.
class EnvelopeUploader {
  public:
    struct Answer {
        std::optional<std::string> envelopeId; ///< that the service gave the envelope: it is there
        Failure error;                         ///< set unless `envelopeId` is
        /// With an error: whether the service surely has not taken the envelope. When not, it may have.
        bool isSettled = false;
    };
    using Completion = std::function<void(Answer)>;
    /// Envelope identifiers by transaction identifier; those that the service does not know are missing.
    using LookupCompletion = std::function<void(Result<std::map<std::string, std::string>>)>;

    virtual ~EnvelopeUploader() = default;
    /// Sends the envelope once. Completes exactly once, on any thread but not inside the call.
    virtual void upload(std::shared_ptr<NVESEnvelopeDefinition> envelope, Completion completion) = 0;
    /// Asks which of the envelopes the service has. Completes as `upload` does.
    virtual void lookUp(const std::vector<std::string>& transactionIds, LookupCompletion completion) = 0;

    /// The one that asks the signed-in account's service.
    static std::shared_ptr<EnvelopeUploader> service();
};

} // namespace norvane
