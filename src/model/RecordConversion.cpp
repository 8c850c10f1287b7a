#include "src/model/RecordConversion.h"

#include <norvane/platform/DateFormat.h>
#include <norvane/platform/TextCompare.h>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace norvane {
namespace {

/// Numbers that are read as whole ones, whatever follows the point.
constexpr std::string_view kWholeNumbers[] = {"anchorXOffset", "anchorYOffset", "routingOrder",
                                              "currentRoutingOrder"};

field::Number numberOf(const std::string& text, std::string_view name) {
    const auto number = numberFromText(text);
    const bool isWhole =
        std::find(std::begin(kWholeNumbers), std::end(kWholeNumbers), name) != std::end(kWholeNumbers);
    return number && isWhole ? std::trunc(*number) : number;
}

/// A number or date as the text of the wire.
field::Text textFrom(const Value& value, bool standsForBoolean) {
    if (standsForBoolean || value.isBool()) return std::string(value.boolValue() ? "true" : "false");
    if (const Date* date = value.asDate()) return formatIso8601(*date);
    return value.stringValue();
}

/// Sets a number or date from the text of the wire.
void readText(const field::Text& text, const Field& target, void* to) {
    const auto boolean = [&] { return text && Value(*text).boolValue(); };
    switch (target.kind) {
    case FieldKind::DateTime:
        target.as<field::Date>(to) = text ? parseIso8601(*text) : std::nullopt;
        break;
    case FieldKind::Bool:
        target.as<bool>(to) = boolean();
        break;
    case FieldKind::Integer:
        target.as<std::int64_t>(to) = text ? Value(*text).integerValue() : 0;
        break;
    case FieldKind::Number:
        if (!text)
            target.as<field::Number>(to) = std::nullopt;
        else
            target.as<field::Number>(to) =
                isBooleanAttribute(target.name) ? boolean() : numberOf(*text, target.name);
        break;
    default:
        break;
    }
}

bool isTextual(FieldKind kind) {
    return kind == FieldKind::Bool || kind == FieldKind::Integer || kind == FieldKind::Number ||
           kind == FieldKind::DateTime;
}

bool contains(std::span<const std::string_view> names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool passesOver(const ConversionRule& rule, std::string_view name) {
    return contains(rule.except, name) || (!rule.only.empty() && !contains(rule.only, name));
}

} // namespace

std::optional<double> numberFromText(std::string_view text, bool grouped) {
    std::string digits(trimmed(text));
    if (grouped) std::erase(digits, ',');
    double number = 0;
    const char* end = digits.data() + digits.size();
    const auto format = grouped ? std::chars_format::general : std::chars_format::fixed;
    const auto [stop, error] = std::from_chars(digits.data(), end, number, format);
    if (error != std::errc() || stop != end || !std::isfinite(number)) return std::nullopt;
    return number;
}

const ConversionRule* RecordConversion::ruleFor(const RecordType& fromType, const RecordType& toType) const {
    for (const ConversionRule& rule : rules_)
        if (&rule.to() == &toType && (!rule.from || &rule.from() == &fromType)) return &rule;
    return nullptr;
}

void RecordConversion::convertReferences(const Field& source, const void* from, const Field& target,
                                         void* to) const {
    const ReferenceAccess& sources = *source.reference;
    const ReferenceAccess& targets = *target.reference;
    const void* elements = source.in(from);
    void* result = target.in(to);
    targets.clear(result);
    if (!sources.present(elements)) return;
    const std::size_t count = sources.size(elements);
    if (target.kind == FieldKind::List) targets.reset(result, count);
    for (std::size_t index = 0; index < count; ++index)
        apply(sources.type(), sources.at(elements, index), targets.type(), targets.emplace(result));
}

void RecordConversion::convertField(const Field& source, const void* from, const Field& target,
                                    void* to) const {
    if (source.kind == target.kind && source.reference) return convertReferences(source, from, target, to);
    if (copyField(source, from, target, to)) return;
    if (target.kind == FieldKind::Text && isTextual(source.kind))
        target.as<field::Text>(to) = textFrom(valueOf(source, from), isBooleanAttribute(source.name));
    else if (source.kind == FieldKind::Text)
        readText(source.as<field::Text>(from), target, to);
}

void RecordConversion::apply(const RecordType& fromType, const void* from, const RecordType& toType,
                             void* to) const {
    const ConversionRule* rule = ruleFor(fromType, toType);
    std::size_t hint = 0;
    for (const Field& target : toType.fields()) {
        if (rule && passesOver(*rule, target.name)) continue;
        const Field* source = fromType.find(target.name, hint);
        if (!source) continue;
        hint = static_cast<std::size_t>(source - fromType.fields().data()) + 1;
        convertField(*source, from, target, to);
    }
    if (rule && rule->then) rule->then(from, to);
}

} // namespace norvane
