#pragma once

#include "Kit.h"

namespace CLI {
class App;
}

namespace norvane::cli {

/// What the commands share: the options, and the exit status that the chosen one leaves.
struct Context {
    GlobalOptions options;
    Exit exit = Exit::Done;

    Output output() const { return Output(options.json); }
    /// Reports the error, if there is one; answers whether there was.
    bool failed(const Failure& failure) {
        if (failure) exit = output().error(*failure);
        return failure.has_value();
    }
};

/// Lets the last argument of a command begin with a hyphen; `takeHyphenated` fills it in when the command
/// runs.
void acceptHyphens(CLI::App& command, Context& context);
void takeHyphenated(const CLI::App& command, std::optional<std::string>& argument);

void addAccountCommands(CLI::App& program, Context& context);
void addTemplateCommands(CLI::App& program, Context& context);
void addSignCommand(CLI::App& program, Context& context);
void addEnvelopeCommands(CLI::App& program, Context& context);
void addStoreCommands(CLI::App& program, Context& context);
void addConfigCommands(CLI::App& program, Context& context);
void addApiCommand(CLI::App& program, Context& context);
void addRecordsCommand(CLI::App& program, Context& context);
void addQueryCommand(CLI::App& program, Context& context);
void addValidateCommand(CLI::App& program, Context& context);

} // namespace norvane::cli
