#pragma once

#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/NVMCDEnvelopes.h>

namespace norvane {

/// Takes a stored envelope out, with the bookkeeping of its caching and, unless they are preserved, its
/// files.
void removeEnvelope(ManagedObjectContext& context, const NVMCDEnvelopeDefinition& envelope,
                    bool preserveDocuments);

/// Forgets what is known of attempts at uploading it.
void forgetUpload(ManagedObjectContext& context, const NVMCDEnvelopeDefinition& envelope);

} // namespace norvane
