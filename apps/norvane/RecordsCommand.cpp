#include "Commands.h"

#include <norvane/api/NVESObject.h>
#include <norvane/api/RecordJson.h>
#include <norvane/platform/Json.h>

#include <CLI/CLI.hpp>

namespace norvane::cli {

namespace {

std::string kindOf(const Field& field) {
    switch (field.kind) {
    case FieldKind::Bool:
    case FieldKind::Integer:
    case FieldKind::Number:
        return "number";
    case FieldKind::TextList:
    case FieldKind::Any:
        return "array";
    case FieldKind::List:
        return "array of " + std::string(field.reference->type().name());
    case FieldKind::Record:
        return std::string(field.reference->type().name());
    case FieldKind::Local:
        return "local URL";
    default:
        return "string";
    }
}

Array keysOf(const RecordType& type) {
    Array keys;
    for (const Field& field : type.fields())
        if (field.kind != FieldKind::Rest)
            keys.push_back(Dictionary{{"key", jsonKey(field.name)}, {"kind", kindOf(field)}});
    return keys;
}

} // namespace

void addRecordsCommand(CLI::App& program, Context& context) {
    auto name = std::make_shared<std::string>();
    auto* command = program.add_subcommand(
        "records", "The keys of the wire records, in order, as JSON; needs neither a home nor a sign-in");
    command->footer(
        "A record without keys is one that the kit hands through as it came. A \"local URL\" is the\n"
        "device's own and never travels.");
    command->add_option("NAME", *name, "One record, such as NVESText; all when absent");
    command->callback([&context, name] {
        Dictionary records;
        for (const RecordType* type : wireRecordTypes())
            if (name->empty() || type->name() == *name) records.emplace(type->name(), keysOf(*type));
        if (records.empty()) throw CLI::ValidationError("NAME", "no wire record \"" + *name + "\"");
        context.output().result(records, {writeJson(records, true)});
    });
}

} // namespace norvane::cli
