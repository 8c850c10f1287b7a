#pragma once

#include "src/platform/FileLock.h"

#include <norvane/store/ObjectStore.h>

namespace norvane {

/// Held while an envelope is being uploaded, so that two processes with one store do not send one envelope
/// both. Waits.
inline Result<FileLock> lockUploads(const ObjectStore& store) {
    auto file = store.file();
    file += ".upload.lock";
    return FileLock::acquire(file);
}

} // namespace norvane
