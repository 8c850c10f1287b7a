#pragma once

#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/NVMCDEnvelopes.h>

namespace norvane {

/// Takes a stored envelope out, with everything that is kept about it and, unless they are preserved, its files.
void removeEnvelope(ManagedObjectContext& context, const NVMCDEnvelopeDefinition& envelope, bool preserveDocuments);

} // namespace norvane
