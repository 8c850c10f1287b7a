#include <norvane/model/mapping/EnvelopeJson.h>
#include <norvane/platform/Platform.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

using norvane::NVMEnvelopeDefinition;

void askAll(NVMEnvelopeDefinition& envelope) {
    for (const auto& signer : envelope.allSigners()) {
        envelope.remainingRequiredTagsForRecipient(signer);
        envelope.requiredNavigableTagsForRecipient(signer);
    }
    envelope.assignLabelsAndIDsToTabs();
    envelope.signedRecipients();
    envelope.unsignedRecipients();
}

} // namespace

/// Whatever comes in: an envelope or an error, and an envelope answers and is written so that it reads the
/// same again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool isInstalled = [] {
        norvane::Platform::install(norvane::Platform::withoutHome({}));
        return true;
    }();
    const std::string_view json(reinterpret_cast<const char*>(data), size);
    const auto envelope = norvane::envelopeFromJson(json);
    if (!isInstalled || !envelope) return 0;
    askAll(**envelope);
    const std::string written = norvane::jsonFromEnvelope(**envelope);
    const auto again = norvane::envelopeFromJson(written);
    if (!again || norvane::jsonFromEnvelope(**again) != written) std::abort();
    return 0;
}
