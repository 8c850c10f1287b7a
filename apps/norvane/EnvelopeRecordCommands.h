#pragma once

#include <norvane/platform/NVMError.h>

#include <string>

namespace CLI {
class App;
}

namespace norvane::cli {

struct Context;

/// "show" and "import", below "envelopes".
void addEnvelopeRecordCommands(CLI::App& envelopes, Context& context);

NVMError envelopeNotFound(const std::string& id);

} // namespace norvane::cli
