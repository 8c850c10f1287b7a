#pragma once

#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/NVMCDEnvelopes.h>

namespace norvane {

/// Takes a stored envelope out with, unless they are preserved, its files. That its caching was enabled stays
/// on record, deliberately.
void removeEnvelope(ManagedObjectContext& context, const NVMCDEnvelopeDefinition& envelope,
                    bool preserveDocuments);

/// Takes that out too.
void forgetCaching(ManagedObjectContext& context, const NVMCDEnvelopeDefinition& envelope);

/// Forgets what is known of attempts at uploading it.
void forgetUpload(ManagedObjectContext& context, const NVMCDEnvelopeDefinition& envelope);

} // namespace norvane
