#pragma once

#include <norvane/platform/Data.h>
#include <norvane/platform/Result.h>

#include <memory>

namespace norvane {

struct NVMEnvelopeDefinition;

/// The envelope's combined PDF with what was filled in drawn where it belongs: text and dates in black, check
/// marks, signatures and initials; without frames, placeholders and the looks of empty fields. An error when
/// the envelope has no combined document or that is no PDF.
Result<Data> signedPreviewOf(const NVMEnvelopeDefinition& envelope);

} // namespace norvane
