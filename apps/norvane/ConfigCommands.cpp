#include "Commands.h"

#include <norvane/sdk/Configuration.h>

#include <CLI/CLI.hpp>

namespace norvane::cli {

namespace {

constexpr std::string_view kPrefix = "nvm.setup.";

void list(Context& context) {
    Dictionary document = defaultConfigurations();
    std::vector<std::string> lines;
    for (auto& [key, value] : document) {
        const Value stored = nvm_getDefaultsStringForKey(key);
        if (!stored.isNull()) value = stored;
        lines.push_back(key + " = " + value.stringValue().value_or(""));
    }
    context.output().result(document, lines);
}

void set(Context& context, const std::string& key, const std::string& text) {
    Value value(text);
    if (key == NVM_SETUP_TAB_DEFAULTS_COMPARISION && !text.empty() &&
        text.find_first_not_of("0123456789") == std::string::npos)
        value = Value(text).integerValue();
    if (context.failed(nvm_setDefaults(value, key))) return;
    context.output().result(Dictionary{{key, value}}, {key + " = " + text});
}

} // namespace

void addConfigCommands(CLI::App& program, Context& context) {
    auto* config = program.add_subcommand("config", "The configuration keys of the kit");
    config->require_subcommand(1);
    config->add_subcommand("list", "Every key with its value")->callback([&context] { list(context); });

    struct Arguments {
        std::string key;
        std::string value;
    };
    auto arguments = std::make_shared<Arguments>();
    auto* setCommand = config->add_subcommand("set", "Stores a value");
    setCommand->add_option("KEY", arguments->key, "A key that begins \"nvm.setup.\"")
        ->required()
        ->check([](const std::string& key) {
            return key.starts_with(kPrefix) ? std::string() : "a key begins \"nvm.setup.\"";
        });
    setCommand->add_option("VALUE", arguments->value, "\"true\", \"false\" or a number")->required();
    setCommand->callback([&context, arguments] { set(context, arguments->key, arguments->value); });
}

} // namespace norvane::cli
