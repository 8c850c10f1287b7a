#include "Commands.h"

#include <norvane/platform/Platform.h>

#include <CLI/CLI.hpp>

#include <csignal>
#include <iostream>

namespace {

constexpr const char* kDescription =
    "The command line host of the Norvane kit: signs in to an e-signature service, keeps templates on this\n"
    "device, signs them offline and uploads the finished envelopes.";

constexpr const char* kFooter = R"(
A first session:
  norvane --home DIR login --host URL --integrator-key KEY --user NAME    (password: NORVANE_PASSWORD or a prompt)
  norvane --home DIR templates list
  norvane --home DIR templates cache TEMPLATE_ID
  norvane --home DIR sign TEMPLATE_ID --script signing.json --preview signed.pdf
  norvane --home DIR sync

Secrets come from the environment (NORVANE_PASSWORD, NORVANE_TOKEN, NORVANE_API_PASSWORD) or a prompt.
Exit status: 0 done, 1 an error of the kit, 2 wrong usage.)";

/// Says what is wrong with the command line, or what was asked to be told about it.
norvane::cli::Exit explain(const CLI::App& program, const CLI::ParseError& error) {
    const auto unknown = program.remaining(true);
    const bool isUnknown = dynamic_cast<const CLI::RequiredError*>(&error) && !unknown.empty();
    if (isUnknown) std::cerr << "norvane: no command \"" << unknown.front() << "\"; try norvane --help\n";
    const int status = isUnknown ? error.get_exit_code() : program.exit(error);
    return status == 0 ? norvane::cli::Exit::Done : norvane::cli::Exit::WrongUsage;
}

} // namespace

int main(int argc, char** argv) {
    using namespace norvane::cli;
    using norvane::NVMError;
    // A file that may not grow is an error of the kit, like any other.
    std::signal(SIGXFSZ, SIG_IGN);
    Context context;
    CLI::App program(kDescription, "norvane");
    program.require_subcommand(1);
    program.fallthrough();
    program.add_option("--home", context.options.home, "Folder that holds all of the application's folders");
    program
        .add_option("--cacert", context.options.trustAnchor,
                    "PEM file of the only certificate authority to trust")
        ->check(CLI::ExistingFile);
    program.add_flag("--json", context.options.json,
                     "One JSON document on standard output, and nothing else there");
    program.add_option("--credentials", context.options.credentials, "Where credentials are kept")
        ->check(CLI::IsMember({"automatic", "file", "secret-service"}));
    // Before any command runs.
    program.parse_complete_callback([&context, &program] {
        // Queries answer in English whoever asks.
        if (program.got_subcommand("query")) return installPlatformWithoutHome("en");
        if (program.got_subcommand("validate")) return installPlatformWithoutHome(std::nullopt);
        if (const auto failure = installPlatform(context.options)) {
            context.exit = context.output().error(*failure);
            throw CLI::RuntimeError(static_cast<int>(context.exit));
        }
    });
    addAccountCommands(program, context);
    addTemplateCommands(program, context);
    addSignCommand(program, context);
    addEnvelopeCommands(program, context);
    addStoreCommands(program, context);
    addConfigCommands(program, context);
    addApiCommand(program, context);
    addRecordsCommand(program, context);
    addQueryCommand(program, context);
    addValidateCommand(program, context);
    program.footer(kFooter); // last: commands take over the footer that they find
    try {
        program.parse(argc, argv);
    } catch (const CLI::RuntimeError& stop) {
        return stop.get_exit_code();
    } catch (const CLI::ParseError& error) {
        context.exit = explain(program, error);
    }
    if (!std::cout.flush())
        context.exit = Output(false).error(
            NVMError::make("norvane.command", 0, "The output could not be written.", "OUTPUT_FAILED"));
    return static_cast<int>(context.exit);
}
