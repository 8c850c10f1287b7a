#pragma once

#include <memory>
#include <string>

namespace norvane {

struct NVMEnvelopeDefinition;
struct NVMRecipient;

/// Lower-case hexadecimal SHA-256 over what the recipient signed: the bytes of the combined PDF, then for
/// each of the recipient's tabs, ordered by tab id, its id, label, value and image bytes, each followed by a
/// zero byte.
std::string offlineSigningHash(const NVMEnvelopeDefinition& envelope,
                               const std::shared_ptr<NVMRecipient>& recipient);

} // namespace norvane
