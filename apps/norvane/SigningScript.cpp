#include "SigningScript.h"

#include "DefaultsFile.h"
#include "SignatureFile.h"

#include <norvane/platform/Json.h>
#include <norvane/platform/Platform.h>

#include <set>

namespace norvane::cli {

namespace {

NVMError wrong(const std::string& what) {
    return NVMError::make("norvane.command", 0, "The signing script " + what + ".", "SIGNING_SCRIPT_INVALID");
}

/// An error that names the first member that is not one of the known ones.
Failure onlyMembers(const Dictionary& object, const std::set<std::string_view>& known,
                    const std::string& where) {
    for (const auto& [key, value] : object)
        if (!known.contains(key)) return wrong("has an unknown member \"" + key + "\" in " + where);
    return std::nullopt;
}

Failure readTabs(const Value& tabs, ScriptedSigner& signer) {
    if (tabs.isNull()) return std::nullopt;
    const Dictionary* object = tabs.asDictionary();
    if (!object)
        return wrong("must give \"tabs\" of " + signer.recipient + " as an object of tab label to value");
    for (const auto& [label, value] : *object) {
        if (!value.isString() && !value.isBool())
            return wrong("must give the tab \"" + label + "\" of " + signer.recipient +
                         " a text, true or false");
        signer.tabs.emplace_back(label, value);
    }
    return std::nullopt;
}

Failure readImage(const Value& name, const std::filesystem::path& folder, const std::string& member,
                  std::optional<Image>& image) {
    if (name.isNull()) return std::nullopt;
    const std::string* text = name.asString();
    if (!text) return wrong("must give \"" + member + "\" as a file name");
    auto read = readSignatureFile(folder / *text);
    if (!read) return read.error();
    image = std::move(*read);
    return std::nullopt;
}

Result<ScriptedSigner> readSigner(const Value& value, const std::filesystem::path& folder) {
    const Dictionary* object = value.asDictionary();
    if (!object) return wrong("must hold objects in \"signers\"");
    if (const auto failure = onlyMembers(*object, {"recipient", "tabs", "signature", "initials"}, "a signer"))
        return *failure;
    ScriptedSigner signer;
    const std::string* recipient = value["recipient"].asString();
    if (!recipient || recipient->empty()) return wrong("must name the \"recipient\" of each signer");
    signer.recipient = *recipient;
    if (const auto failure = readTabs(value["tabs"], signer)) return *failure;
    if (const auto failure = readImage(value["signature"], folder, "signature", signer.signature))
        return *failure;
    if (const auto failure = readImage(value["initials"], folder, "initials", signer.initials))
        return *failure;
    return signer;
}

} // namespace

Result<SigningScript> readSigningScript(const std::filesystem::path& file) {
    const auto bytes = Platform::current().files->read(file);
    if (!bytes) return bytes.error();
    const auto document = parseJson(bytes->view());
    if (!document) return wrong("is no JSON: " + document.error().localizedDescription());
    const Dictionary* object = document->asDictionary();
    if (!object) return wrong("must be a JSON object");
    if (const auto failure = onlyMembers(*object, {"defaults", "signers"}, "the script")) return *failure;

    SigningScript script;
    if (const Value& defaults = (*document)["defaults"]; !defaults.isNull()) {
        if (!defaults.isDictionary()) return wrong("must give \"defaults\" as an object");
        auto read = defaultsFromJson(bytes->view(), "/defaults");
        if (!read) return read.error();
        script.defaults = std::move(*read);
    }
    const Array* signers = (*document)["signers"].asArray();
    if (!signers || signers->empty()) return wrong("must list at least one of \"signers\"");
    for (const Value& value : *signers) {
        auto signer = readSigner(value, file.parent_path());
        if (!signer) return signer.error();
        script.signers.push_back(std::move(*signer));
    }
    return script;
}

} // namespace norvane::cli
