#pragma once

#include <memory>

namespace norvane {

struct NVMEnvelopeDefinition;

/// Owns the envelope that is being signed offline, and its files on the device.
class NVMNativeSigningEnvelopeHandler {
  public:
    explicit NVMNativeSigningEnvelopeHandler(std::shared_ptr<NVMEnvelopeDefinition> envelope);

    const std::shared_ptr<NVMEnvelopeDefinition>& envelope() const { return envelope_; }
    void setEnvelope(std::shared_ptr<NVMEnvelopeDefinition> envelope);

    /// Deletes the files of the envelope's documents and of its combined document. Documents without a path
    /// are skipped, a missing file is no error; the record itself stays.
    void clearEnvelope();

  private:
    std::shared_ptr<NVMEnvelopeDefinition> envelope_;
};

} // namespace norvane
