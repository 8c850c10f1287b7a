#pragma once

#include <norvane/platform/Result.h>

#include <memory>
#include <string>

namespace norvane {

class ManagedObjectContext;
struct NVMCDEnvelopeDefinition;

/// The envelope of that identifier, or null; an error when it is there and cannot be read. What the handler's
/// look-up answers, for those who can tell their caller.
Result<std::shared_ptr<NVMCDEnvelopeDefinition>> storedEnvelope(const std::string& envelopeId,
                                                                const ManagedObjectContext& context);

} // namespace norvane
