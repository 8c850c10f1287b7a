#include "Commands.h"

#include <norvane/formula/NVM_NVValidator.h>

#include <CLI/CLI.hpp>

#include <map>

namespace norvane::cli {

namespace {

using MakeValidator = std::shared_ptr<NVM_NVValidator> (*)();

const std::map<std::string, MakeValidator>& validators() {
    static const std::map<std::string, MakeValidator> all = {
        {"name", NVM_NVValidator::nvm_nameValidator},
        {"email", NVM_NVValidator::nvm_emailValidator},
        {"password", NVM_NVValidator::nvm_createPasswordValidator},
        {"subject", NVM_NVValidator::nvm_emailSubjectValidator},
    };
    return all;
}

void validate(Context& context, const std::string& kind, const std::string& text) {
    std::vector<std::string> broken;
    for (const auto& condition : validators().at(kind)()->conditionsViolatedByText(text))
        broken.push_back(condition->localizedDescription);
    context.output().result(Array(broken.begin(), broken.end()), broken);
    if (!broken.empty()) context.exit = Exit::KitError;
}

} // namespace

void addValidateCommand(CLI::App& program, Context& context) {
    auto kind = std::make_shared<std::string>();
    auto text = std::make_shared<std::optional<std::string>>();
    auto* command = program.add_subcommand(
        "validate", "Prints the rules that an entered text breaks; needs no home and no sign-in");
    command->footer("Exit status 1 when it breaks any.");
    command->add_option("KIND", *kind, "name, email, password or subject")
        ->required()
        ->check(CLI::IsMember(validators()));
    command->add_option("TEXT", *text, "The text");
    acceptHyphens(*command, context);
    command->callback([&context, kind, text, command] {
        takeHyphenated(*command, *text);
        if (!*text) throw CLI::RequiredError("TEXT");
        validate(context, *kind, **text);
    });
}

} // namespace norvane::cli
