#include "Commands.h"

#include <norvane/api/NVMApi.h>
#include <norvane/api/RecordJson.h>
#include <norvane/platform/Json.h>
#include <norvane/platform/NVMException.h>

#include <CLI/CLI.hpp>

#include <fstream>
#include <iterator>

namespace norvane::cli {

namespace {

constexpr std::string_view kDocumentPrefix = "documentId-";

struct ApiArguments {
    std::string operation;
    std::vector<std::string> parameters;
    std::string body;
    std::string output;
};

struct Called {
    NVESResult result;
    std::optional<NVMError> error;
};

bool isOfflineUpload(const NVESOperation& operation) {
    return operation.contentType == "multipart/form-data";
}

std::string described(const NVESOperation& operation) {
    std::string line = "  " + std::string(operation.name);
    for (const std::string_view name : operation.requiredParameters())
        if (name != "accountId") line.append(" ").append(name);
    for (const std::string& name : operation.queryParameters())
        line.append(" [").append(name).append("]");
    if (operation.body == "NSData")
        line += " --body IMAGE";
    else if (!operation.body.empty())
        line.append(" --body ").append(operation.body);
    if (isOfflineUpload(operation)) line += " documentId-ID=FILE...";
    if (operation.result == "NSObject")
        line += " -> JSON";
    else if (!operation.result.empty())
        line.append(" -> ").append(operation.result == "NSURL*" ? "a file" : operation.result);
    return line + "\n";
}

std::string operationsText() {
    std::string text = R"(
PARAM=VALUE names the parameters of the path and, in brackets, those of the query; accountId is the signed-in
account's unless given. An operation is named alone, with its service (NVESTemplatesApi.get) or as the kit's
facade calls it (getTemplateWithId). JSON answers are printed as the kit reads them; a downloaded file
goes to --output, and its path is printed.

  norvane api listTemplates count=5 search_text=lease
  norvane api getDocument templateId=ID documentId=combined --output lease.pdf
  norvane api createTabs envelopeId=ID recipientId=1 --body tabs.json

Operations:)";
    std::string_view service;
    for (const NVESOperation& operation : serviceOperations()) {
        if (operation.service != service) text.append("\n").append(operation.service).append("\n");
        service = operation.service;
        text += described(operation);
    }
    return text;
}

const NVESOperation& operationNamed(const std::string& name) {
    const auto found = serviceOperationsNamed(name);
    if (found.size() == 1) return *found.front();
    if (found.empty())
        throw CLI::ValidationError("OPERATION", "no operation \"" + name + "\"; see norvane api --help");
    std::string choices;
    for (const NVESOperation* operation : found)
        choices.append(" ").append(operation->service).append(".").append(operation->name);
    throw CLI::ValidationError("OPERATION", "\"" + name + "\" may mean" + choices);
}

Data contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (!file) throw CLI::ValidationError("--body", "the file cannot be read");
    return Data(std::move(content));
}

NVESOperationArguments argumentsOf(const NVESOperation& operation, const ApiArguments& given) {
    NVESOperationArguments arguments;
    for (const std::string& parameter : given.parameters) {
        const std::size_t equals = parameter.find('=');
        if (equals == std::string::npos || equals == 0)
            throw CLI::ValidationError("PARAM=VALUE", "\"" + parameter + "\" is not of that form");
        const std::string name = parameter.substr(0, equals);
        if (isOfflineUpload(operation) && name.starts_with(kDocumentPrefix))
            arguments.documents[name.substr(kDocumentPrefix.size())] =
                std::filesystem::absolute(parameter.substr(equals + 1));
        else
            arguments.parameters[name] = parameter.substr(equals + 1);
    }
    if (!given.body.empty()) arguments.body = contentOf(given.body);
    if (!given.body.empty() && operation.body.empty())
        throw CLI::ValidationError("--body", "this operation sends nothing");
    return arguments;
}

std::string answerText(const NVESResult& result) {
    if (result.recordType()) return writeRecord(*result.recordType(), result.anyRecord().get());
    return writeJson(result.value());
}

/// Without `output` the download stays where it is, and is whoever's ran the program.
void takeDownload(Context& context, const Url& file, const std::string& output) {
    std::filesystem::path path = file.filePath();
    if (!output.empty()) {
        std::error_code failure, ignored;
        std::filesystem::copy_file(path, output, std::filesystem::copy_options::overwrite_existing, failure);
        std::filesystem::remove(path, ignored); // it lies in a folder for temporary files
        if (failure) {
            context.failed(NVMError::make("norvane.command", failure.value(),
                                          "\"" + output + "\" cannot be written: " + failure.message() + ".",
                                          "FILE_NOT_WRITTEN"));
            return;
        }
        path = output;
    }
    context.output().result(Dictionary{{"file", path.string()}}, {path.string()});
}

void call(Context& context, const ApiArguments& given) {
    const NVESOperation& operation = operationNamed(given.operation);
    NVESOperationArguments arguments = argumentsOf(operation, given);
    if (context.failed(openKit())) return;
    const Answer<Called> answer;
    try {
        NVMApi::callOperation(operation, std::move(arguments),
                              [answer](const NVESResult& result, const std::optional<NVMError>& error) {
                                  answer.give({result, error});
                              });
    } catch (const NVMException& refused) {
        throw CLI::ValidationError(refused.name(), refused.reason());
    }
    const Called called = answer.wait();
    if (context.failed(called.error)) return;
    if (called.result.file())
        takeDownload(context, *called.result.file(), given.output);
    else
        context.output().json(answerText(called.result));
}

} // namespace

void addApiCommand(CLI::App& program, Context& context) {
    auto arguments = std::make_shared<ApiArguments>();
    auto* command = program.add_subcommand("api", "Calls one operation of the service and prints its answer");
    command->footer(operationsText);
    command->add_option("OPERATION", arguments->operation, "Its name")->required();
    command->add_option("PARAM=VALUE", arguments->parameters, "Its parameters");
    command->add_option("--body", arguments->body, "What is sent: JSON, or an image")
        ->check(CLI::ExistingFile);
    command->add_option("--output", arguments->output,
                        "Where a downloaded file goes; a temporary file when absent");
    command->callback([&context, arguments] { call(context, *arguments); });
}

} // namespace norvane::cli
