#pragma once

#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/NVMManagedObject.h>

#include <optional>
#include <string>

namespace norvane {

// The steps of a removal; each takes effect when the context is saved. None needs the envelope's content:
// one that is damaged can be removed too.

/// Takes a stored envelope out with, unless they are preserved, its files. That its caching was enabled stays
/// on record, deliberately.
void removeEnvelope(ManagedObjectContext& context, const ManagedObjectID& envelope, bool preserveDocuments);

/// Takes that out too.
void forgetCaching(ManagedObjectContext& context, const std::optional<std::string>& identifier);

/// Forgets what is known of attempts at uploading under the transaction identifier.
void forgetUpload(ManagedObjectContext& context, const std::optional<std::string>& transactionId);

} // namespace norvane
