#pragma once

#include <norvane/model/NVMEnvelopeDefaults.h>
#include <norvane/platform/Result.h>
#include <norvane/signature/Image.h>

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace norvane::cli {

/// What one signer does when it is that person's turn.
struct ScriptedSigner {
    std::string recipient;                           ///< display name
    std::vector<std::pair<std::string, Value>> tabs; ///< label to text or Boolean
    std::optional<Image> signature;
    std::optional<Image> initials;
};

/// A signing script: who the recipients are, and what each signer fills in, in signing order.
struct SigningScript {
    NVMEnvelopeDefaults defaults;
    std::vector<ScriptedSigner> signers;
};

/// Reads a script and the signature files that it names (relative names are relative to the script). The
/// error names the member or file that is wrong.
Result<SigningScript> readSigningScript(const std::filesystem::path& file);

} // namespace norvane::cli
