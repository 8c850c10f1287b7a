#pragma once

#include <norvane/platform/Date.h>
#include <norvane/platform/Result.h>
#include <norvane/store/ObjectStore.h>

#include <optional>
#include <string>

namespace norvane {

/// The attempts at uploading whose end is not settled for good, by transaction identifier. An attempt is
/// unknown from before its first byte is sent. It is struck out when the service surely has not taken the
/// envelope, and becomes accepted when the service has; then it lasts until the envelope has left the store.
class UploadAttempts {
  public:
    struct Attempt {
        Date startedAt;
        std::optional<std::string> envelopeId; ///< that the service gave; absent while the outcome is unknown
    };

    explicit UploadAttempts(ObjectStore& store)
        : store_(store) {}

    Result<std::optional<Attempt>> find(const std::string& transactionId) const;
    Failure begin(const std::string& transactionId, Date now);
    /// The service has it: the stored envelope gets the service's identifier in the same save.
    Failure accepted(const std::string& transactionId, const std::string& envelopeId);
    Failure refused(const std::string& transactionId);

  private:
    ObjectStore& store_;
};

} // namespace norvane
