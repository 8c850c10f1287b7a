#include "src/api/RecordWriter.h"

#include <norvane/api/NVESObject.h>
#include <norvane/platform/Json.h>

#include <simdjson.h>

#include <charconv>
#include <cmath>
#include <cstring>

namespace norvane {
namespace {

/// Whether the eight bytes are all printable ASCII that JSON takes as it is.
bool arePlain(std::uint64_t bytes) {
    constexpr std::uint64_t kOnes = 0x0101010101010101u;
    constexpr std::uint64_t kHighs = 0x8080808080808080u;
    const auto hasZero = [](std::uint64_t word) { return (word - kOnes) & ~word & kHighs; };
    const std::uint64_t control = (bytes - kOnes * 0x20) & ~bytes & kHighs;
    return ((bytes & kHighs) | control | hasZero(bytes ^ (kOnes * '"')) | hasZero(bytes ^ (kOnes * '\\'))) ==
           0;
}

bool isPlain(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte >= 0x20 && byte < 0x80 && byte != '"' && byte != '\\';
}

std::size_t plainPrefix(std::string_view text) {
    std::size_t at = 0;
    for (std::uint64_t word = 0; at + sizeof word <= text.size(); at += sizeof word) {
        std::memcpy(&word, text.data() + at, sizeof word);
        if (!arePlain(word)) break;
    }
    while (at < text.size() && isPlain(text[at]))
        ++at;
    return at;
}

bool isWritten(const Field& field, const void* record) {
    switch (field.kind) {
    case FieldKind::Text:
        return field.as<field::Text>(record).has_value();
    case FieldKind::Number: {
        const auto& number = field.as<field::Number>(record);
        return number && std::isfinite(*number);
    }
    case FieldKind::TextList:
        return field.as<field::TextList>(record).has_value();
    case FieldKind::Any: {
        const auto& value = field.as<field::Any>(record);
        return value && !value->isNull();
    }
    case FieldKind::Bool:
    case FieldKind::Integer:
        return true;
    case FieldKind::Record:
    case FieldKind::List:
        return field.reference->present(field.in(record));
    case FieldKind::DateTime:
    case FieldKind::Bytes:
    case FieldKind::Local:
    case FieldKind::Rest:
        break;
    }
    return false;
}

} // namespace

void RecordWriter::writeRecord(const RecordType& type, const void* record) {
    const std::size_t start = out_.size();
    out_ += '{';
    for (const Field& field : type.fields()) {
        if (field.kind == FieldKind::Rest)
            writeRest(field.as<field::Rest>(record));
        else if (isWritten(field, record))
            writeMember(field, record);
    }
    // Every member ends in a comma; the last one becomes the brace.
    if (out_.size() == start + 1)
        out_ += '}';
    else
        out_.back() = '}';
}

void RecordWriter::writeMember(const Field& field, const void* record) {
    writeKey(jsonKey(field.name));
    switch (field.kind) {
    case FieldKind::Text:
        writeText(*field.as<field::Text>(record));
        break;
    case FieldKind::Bool:
        out_ += field.as<bool>(record) ? "true" : "false";
        break;
    case FieldKind::Integer:
        out_ += std::to_string(field.as<std::int64_t>(record));
        break;
    case FieldKind::Number:
        writeNumber(*field.as<field::Number>(record));
        break;
    case FieldKind::TextList:
        writeTexts(*field.as<field::TextList>(record));
        break;
    case FieldKind::Any:
        out_ += writeJson(*field.as<field::Any>(record));
        break;
    case FieldKind::Record:
        writeRecord(field.reference->type(), field.reference->at(field.in(record), 0));
        break;
    case FieldKind::List:
        writeList(field, record);
        break;
    case FieldKind::DateTime:
    case FieldKind::Bytes:
    case FieldKind::Local:
    case FieldKind::Rest:
        break;
    }
    out_ += ',';
}

/// Names of fields need no escapes.
void RecordWriter::writeKey(std::string_view key) {
    out_ += '"';
    out_ += key;
    out_ += "\":";
}

void RecordWriter::writeText(std::string_view text) {
    const std::size_t plain = plainPrefix(text);
    if (plain == text.size()) {
        out_ += '"';
        out_ += text;
        out_ += '"';
        return;
    }
    if (!simdjson::validate_utf8(text.data(), text.size())) {
        out_ += writeJson(Value(text));
        return;
    }
    constexpr std::string_view kHex = "0123456789abcdef";
    out_ += '"';
    while (!text.empty()) {
        const std::size_t count = plainPrefix(text);
        out_ += text.substr(0, count);
        text.remove_prefix(count);
        if (text.empty()) break;
        const char character = text.front();
        const auto byte = static_cast<unsigned char>(character);
        if (character == '"' || character == '\\')
            out_.append({'\\', character});
        else if (character == '\n')
            out_ += "\\n";
        else if (byte < 0x20)
            out_.append({'\\', 'u', '0', '0', kHex[byte >> 4], kHex[byte & 15]});
        else
            out_ += character;
        text.remove_prefix(1);
    }
    out_ += '"';
}

void RecordWriter::writeNumber(double number) {
    constexpr double kExactIntegers = 1e15;
    char text[32];
    const auto end = std::abs(number) < kExactIntegers && std::trunc(number) == number
                         ? std::to_chars(text, text + sizeof text, static_cast<std::int64_t>(number)).ptr
                         : std::to_chars(text, text + sizeof text, number).ptr;
    out_.append(text, end);
}

void RecordWriter::writeTexts(const std::vector<std::string>& texts) {
    out_ += '[';
    for (const std::string& text : texts) {
        writeText(text);
        out_ += ',';
    }
    if (texts.empty())
        out_ += ']';
    else
        out_.back() = ']';
}

void RecordWriter::writeList(const Field& field, const void* record) {
    const ReferenceAccess& access = *field.reference;
    const RecordType& type = access.type();
    const void* const member = field.in(record);
    const std::size_t count = access.size(member);
    out_ += '[';
    const std::size_t start = out_.size();
    for (std::size_t index = 0; index < count; ++index) {
        writeRecord(type, access.at(member, index));
        out_ += ',';
        // The others will be about as long as the first.
        if (index == 0) out_.reserve(start + (out_.size() - start) * count * 9 / 8);
    }
    if (count == 0)
        out_ += ']';
    else
        out_.back() = ']';
}

void RecordWriter::writeRest(const field::Rest& rest) {
    for (const auto& [key, json] : rest.members) {
        writeText(key);
        out_ += ':';
        out_ += json;
        out_ += ',';
    }
}

} // namespace norvane
