#include "Commands.h"

#include <CLI/CLI.hpp>

namespace norvane::cli {

void acceptHyphens(CLI::App& command, Context& context) {
    command.fallthrough(false);
    command.allow_extras();
    command.add_flag("--json", context.options.json, "The answer as one JSON document");
}

void takeHyphenated(const CLI::App& command, std::optional<std::string>& argument) {
    std::vector<std::string> extras = command.remaining();
    if (!extras.empty() && extras.front() == "--") extras.erase(extras.begin());
    if (!argument && !extras.empty()) {
        argument = extras.front();
        extras.erase(extras.begin());
    }
    if (!extras.empty()) throw CLI::ExtrasError(extras);
}

} // namespace norvane::cli
