#include "Commands.h"
#include "Queries.h"
#include "TextFile.h"

#include <norvane/model/mapping/EnvelopeJson.h>
#include <norvane/platform/Json.h>
#include <norvane/sdk/Configuration.h>
#include <norvane/sdk/NVMCredentials.h>

#include <CLI/CLI.hpp>

#include <algorithm>

namespace norvane::cli {

namespace {

struct Arguments {
    std::filesystem::path file;
    std::string query;
    std::optional<std::string> argument;
};

NVMError wrong(const std::string& what) {
    return NVMError::make("norvane.command", 0, what, "QUERY_FILE_INVALID");
}

/// The user as whom the queries are asked. One without a name or an address counts as nobody, as a stored
/// account that cannot be read whole does.
Failure signIn(const Value& account) {
    if (account.isNull()) return std::nullopt;
    if (!account.isDictionary()) return wrong("\"account\" must be an object.");
    std::optional<std::string> fields[3];
    constexpr std::string_view kNames[] = {"userId", "userName", "email"};
    for (const auto& [key, value] : *account.asDictionary()) {
        const auto* name = std::find(std::begin(kNames), std::end(kNames), key);
        if (name == std::end(kNames)) return wrong("\"account." + key + "\" is not a field of an account.");
        if (!value.isNull() && !value.isString()) return wrong("\"account." + key + "\" must be a text.");
        fields[name - std::begin(kNames)] = value.stringValue();
    }
    const auto& [userId, userName, email] = fields;
    if (!userId || !userName || !email) return std::nullopt;
    return NVMCredentials::persistCredentialsForAccount(*NVMAccount::withAccessToken(
        "token", userId, userName, email, "account", Url::parse("https://localhost"), "key"));
}

Failure configure(const Value& config) {
    if (config.isNull()) return std::nullopt;
    if (!config.isDictionary()) return wrong("\"config\" must be an object.");
    for (const auto& [key, value] : *config.asDictionary()) {
        if (!defaultConfigurations().contains(key))
            return wrong("\"config." + key + "\" is not a configuration key.");
        if (value.isArray() || value.isDictionary())
            return wrong("\"config." + key + "\" must be a text, a number, true or false.");
        if (Failure failure = nvm_setDefaults(value, key)) return failure;
    }
    return std::nullopt;
}

Result<std::shared_ptr<NVMEnvelopeDefinition>> openFile(const std::filesystem::path& file) {
    const auto text = readTextFile(file);
    if (!text) return text.error();
    const auto document = parseJson(*text);
    if (!document) return document.error();
    if (!document->isDictionary()) return wrong("The file must hold an object.");
    Dictionary envelope = *document->asDictionary();
    const auto account = envelope.extract("account");
    const auto config = envelope.extract("config");
    if (Failure failure = account.empty() ? std::nullopt : signIn(account.mapped())) return *failure;
    if (Failure failure = config.empty() ? std::nullopt : configure(config.mapped())) return *failure;
    return envelopeFromValues(envelope);
}

const Query& queryNamed(const std::string& name) {
    const auto all = queries();
    return *std::find_if(all.begin(), all.end(), [&](const Query& query) { return query.name == name; });
}

void checkArgument(const Query& query, const std::optional<std::string>& argument) {
    const std::string name(query.argument);
    if (argument && query.takes == QueryArgument::None)
        throw CLI::ValidationError(std::string(query.name) + " takes no argument");
    if (!argument && query.takes == QueryArgument::Required)
        throw CLI::RequiredError(std::string(query.name) + ": " + name);
    if (argument && query.takes == QueryArgument::Optional && *argument != query.argument)
        throw CLI::ValidationError(std::string(query.name) + " takes \"" + name + "\" or nothing");
}

std::vector<std::string> linesOf(const Value& answer) {
    const auto line = [](const Value& value) {
        const std::string* text = value.asString();
        return text ? *text : writeJson(value);
    };
    std::vector<std::string> lines;
    if (const Array* elements = answer.asArray())
        std::transform(elements->begin(), elements->end(), std::back_inserter(lines), line);
    else
        lines.push_back(answer.isDictionary() ? writeJson(answer, true) : line(answer));
    return lines;
}

void ask(Context& context, const Arguments& arguments) {
    const Query& query = queryNamed(arguments.query);
    checkArgument(query, arguments.argument);
    const auto envelope = openFile(arguments.file);
    if (!envelope) {
        context.failed(envelope.error());
        return;
    }
    const auto answer = query.answer(**envelope, arguments.argument.value_or(""));
    if (answer)
        context.output().result(*answer, linesOf(*answer));
    else
        context.failed(answer.error());
}

std::string listOfQueries() {
    std::string text = "Queries:\n";
    for (const Query& query : queries()) {
        text += "  " + std::string(query.name);
        if (query.takes == QueryArgument::Required) text += " " + std::string(query.argument);
        if (query.takes == QueryArgument::Optional) text += " [" + std::string(query.argument) + "]";
        text += '\n';
    }
    return text;
}

} // namespace

void addQueryCommand(CLI::App& program, Context& context) {
    auto arguments = std::make_shared<Arguments>();
    auto* command = program.add_subcommand(
        "query", "Asks an envelope in a JSON file what the kit asks of it; needs no home and no sign-in");
    command->footer(listOfQueries());
    command->add_option("FILE", arguments->file, "The envelope, with the field names of the records")
        ->required();
    std::vector<std::string> names;
    for (const Query& query : queries())
        names.emplace_back(query.name);
    command->add_option("QUERY", arguments->query, "What to ask")->required()->check(CLI::IsMember(names));
    command->add_option("ARG", arguments->argument, "The query's argument");
    acceptHyphens(*command, context);
    command->callback([&context, arguments, command] {
        takeHyphenated(*command, arguments->argument);
        ask(context, *arguments);
    });
}

} // namespace norvane::cli
