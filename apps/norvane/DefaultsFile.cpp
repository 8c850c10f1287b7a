#include "DefaultsFile.h"

#include <norvane/platform/Json.h>
#include <norvane/record/RecordValue.h>

#include <string>

namespace norvane::cli {

namespace {

constexpr std::string_view kTabValues = "tabValueDefaults";

NVMError wrong(const std::string& what) {
    return NVMError::make("norvane.command", 0, "The defaults " + what, "ENVELOPE_DEFAULTS_INVALID");
}

Result<TabValueDefaults> tabValuesIn(std::string_view document, const std::string& pointer) {
    const auto members = parseJsonMembers(document, pointer);
    if (!members) return members.error();
    TabValueDefaults values;
    for (const auto& [label, value] : *members) {
        if (!value.isString() && !value.isNull())
            return wrong("must give the value of \"" + label + "\" as a text.");
        values.emplace_back(label, value.stringValue());
    }
    return values;
}

} // namespace

Result<NVMEnvelopeDefaults> defaultsFromJson(std::string_view document, std::string_view pointer) {
    const auto members = parseJsonMembers(document, pointer);
    if (!members) return members.error();
    Dictionary fields;
    bool hasTabValues = false;
    for (const auto& [name, value] : *members) {
        if (name != kTabValues) {
            fields.emplace(name, value);
            continue;
        }
        if (!value.isNull() && !value.isDictionary())
            return wrong("must give \"tabValueDefaults\" as an object of tab label to text.");
        hasTabValues = value.isDictionary();
    }
    auto defaults = recordFromValue<NVMEnvelopeDefaults>(fields);
    if (!defaults) return wrong("are wrong: " + defaults.error().localizedDescription());
    if (hasTabValues) {
        auto values = tabValuesIn(document, std::string(pointer) + "/" + std::string(kTabValues));
        if (!values) return values.error();
        defaults->tabValueDefaults = *std::move(values);
    }
    return defaults;
}

} // namespace norvane::cli
