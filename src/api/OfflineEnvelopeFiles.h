#pragma once

#include <norvane/api/NVESRequest.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace norvane {

struct NVESEnvelopeDefinition;

/// The documents with a local file and the images of signature and initials tabs, as file entries; takes both
/// out of the definition, so that they are not in its JSON besides.
std::vector<NVESFileEntry> takeOfflineEnvelopeFiles(NVESEnvelopeDefinition& definition);

/// Says where the documents lie, by their ids, for a definition that came as JSON.
void setDocumentFiles(NVESEnvelopeDefinition& definition,
                      const std::map<std::string, std::filesystem::path>& files);

} // namespace norvane
