#pragma once

#include <memory>

namespace norvane {

struct NVESEnvelopeTemplate;
struct NVMCDEnvelopeTemplate;

/// The stored form of a downloaded template, not yet saved: like-named fields are converted, recipients and
/// tabs get the number of their kind, tabs a frame and an id, radios what their group says. What cannot be
/// read is absent.
std::shared_ptr<NVMCDEnvelopeTemplate> importedTemplate(const NVESEnvelopeTemplate& wire);

} // namespace norvane
