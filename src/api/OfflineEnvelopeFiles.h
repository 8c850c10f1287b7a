#pragma once

#include <norvane/api/NVESRequest.h>

#include <vector>

namespace norvane {

struct NVESEnvelopeDefinition;

/// The documents with a local file and the images of signature and initials tabs, as file entries; takes both
/// out of the definition, so that they are not in its JSON besides.
std::vector<NVESFileEntry> takeOfflineEnvelopeFiles(NVESEnvelopeDefinition& definition);

} // namespace norvane
