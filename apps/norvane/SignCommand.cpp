#include "Commands.h"
#include "ScriptedSigningView.h"

#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/platform/Clock.h>
#include <norvane/platform/Platform.h>
#include <norvane/sdk/Errors.h>
#include <norvane/signing/OfflineEnvelope.h>
#include <norvane/signing/SignedPreview.h>

#include <CLI/CLI.hpp>
#include <unistd.h>

namespace norvane::cli {

namespace {

struct SignArguments {
    std::string templateId;
    std::filesystem::path script;
    std::optional<std::filesystem::path> preview;
};

Dictionary describe(const NVMEnvelopeDefinition& envelope, const SigningScript& script) {
    Array signers;
    for (const ScriptedSigner& signer : script.signers)
        signers.push_back(signer.recipient);
    const Value id = envelope.transactionId;
    return {{"envelopeId", envelope.envelopeId ? Value(envelope.envelopeId) : id},
            {"transactionId", id},
            {"signers", std::move(signers)}};
}

/// Runs the signing to its end. The answer is the outcome of the controller, or the script's failure.
Failure runSigning(const std::shared_ptr<NVMEnvelopeDefinition>& envelope, SigningScript script) {
    const auto mainQueue = Platform::current().executors->mainQueue();
    const Answer<Failure> answer;
    std::shared_ptr<ScriptedSigningView> view;
    std::shared_ptr<NVMNativeSigningViewController> controller;
    mainQueue->sync([&] {
        view = std::make_shared<ScriptedSigningView>(std::move(script));
        auto made = NVMNativeSigningViewController::viewControllerForEnvelope(
            envelope, view, [answer, view](const Result<std::string>& outcome) {
                if (view->failure()) return answer.give(view->failure());
                answer.give(outcome ? Failure() : Failure(outcome.error()));
            });
        if (!made) return answer.give(made.error());
        controller = *made;
        view->setController(controller);
        controller->viewDidLoad();
    });
    Failure failure = answer.wait();
    // The controller belongs to the main queue, and so does its end.
    mainQueue->sync([&] { controller.reset(); });
    return failure;
}

/// Before anybody signs: an envelope must not come of a command that then fails.
Failure checkPreviewPlace(const std::optional<std::filesystem::path>& preview) {
    if (!preview) return std::nullopt;
    const auto folder = std::filesystem::absolute(*preview).parent_path();
    std::error_code ignored;
    const auto present = std::filesystem::status(*preview, ignored);
    // A folder cannot be replaced, and a device must not be.
    const bool isPlace = !std::filesystem::exists(present) || std::filesystem::is_regular_file(present);
    if (isPlace && std::filesystem::is_directory(folder, ignored) && access(folder.c_str(), W_OK | X_OK) == 0)
        return std::nullopt;
    return NVMError::make("norvane.command", 0, "The preview cannot be written to " + preview->string() + ".",
                          "PREVIEW_UNWRITABLE");
}

Failure writePreview(const NVMEnvelopeDefinition& envelope, const std::filesystem::path& file) {
    const auto preview = signedPreviewOf(envelope);
    if (!preview) return preview.error();
    return Platform::current().files->write(std::filesystem::absolute(file), *preview);
}

void sign(Context& context, const SignArguments& arguments) {
    if (!isUuidString(arguments.templateId)) {
        context.failed(NVM_errorInvalidInput());
        return;
    }
    if (context.failed(checkPreviewPlace(arguments.preview)) || context.failed(openKit())) return;
    auto script = readSigningScript(arguments.script);
    if (!script) {
        context.failed(script.error());
        return;
    }

    auto envelope = offlineEnvelopeFromTemplate(arguments.templateId, script->defaults);
    if (!envelope) {
        context.failed(envelope.error());
        return;
    }
    if (context.failed(runSigning(*envelope, *script))) return;
    const std::string transactionId = (*envelope)->transactionId.value_or("");
    if (arguments.preview && context.failed(writePreview(**envelope, *arguments.preview))) {
        warn("Only the preview is missing: the envelope is signed and waits for upload as " + transactionId);
        return;
    }
    std::vector<std::string> lines{"signed; waits for upload as " + transactionId};
    for (const ScriptedSigner& signer : script->signers)
        lines.push_back("  " + signer.recipient);
    context.output().result(describe(**envelope, *script), lines);
}

constexpr const char* kFooter = R"(
The script is JSON:
  {"defaults": {"recipientDefaults": [{"recipientSelectorType": 1, "recipientRoleName": "Tenant",
                                       "recipientType": 6, "recipientName": "the host: your name",
                                       "recipientEmail": "your address", "inPersonSignerName": "Ann Smith"}],
                "tabValueDefaults": {"City": "Oslo"}, "emailSubject": "..."},
   "signers": [{"recipient": "Ann Smith", "tabs": {"Phone": "555 0100", "I agree": true},
                "signature": "ann.json", "initials": "ann-initials.png"}]}
Tabs go by their labels; a group of radio buttons goes by its name and takes the value of the one to choose.
A signature is a PNG, or {"color": "black|blue|red", "width": 6, "strokes": [[[x, y, t], ...], ...]}.)";

} // namespace

void addSignCommand(CLI::App& program, Context& context) {
    auto arguments = std::make_shared<SignArguments>();
    auto* command = program.add_subcommand("sign", "Signs a cached template offline, driven by a script");
    command->footer(kFooter);
    command->add_option("TEMPLATE_ID", arguments->templateId, "A template that is cached")->required();
    command->add_option("--script", arguments->script, "Who signs, and what each fills in")
        ->required()
        ->check(CLI::ExistingFile);
    command->add_option("--preview", arguments->preview, "Where to put the signed PDF to look at");
    command->callback([&context, arguments] { sign(context, *arguments); });
}

} // namespace norvane::cli
