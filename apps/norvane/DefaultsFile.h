#pragma once

#include <norvane/model/NVMEnvelopeDefaults.h>
#include <norvane/platform/Result.h>

#include <string_view>

namespace norvane::cli {

/// Envelope defaults as JSON, by the field names of NVMEnvelopeDefaults and "tabValueDefaults", an object of
/// tab label to text whose order counts. `pointer` is the JSON pointer of the defaults in the document, empty
/// for the whole. The error names what is wrong.
Result<NVMEnvelopeDefaults> defaultsFromJson(std::string_view document, std::string_view pointer);

} // namespace norvane::cli
