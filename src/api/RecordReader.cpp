#include "src/api/RecordReader.h"

#include "src/api/DeserializationErrors.h"

#include <norvane/api/NVESObject.h>
#include <norvane/platform/Json.h>

#include <charconv>
#include <cmath>

namespace norvane {
namespace {

namespace dom = simdjson::dom;
using dom::element_type;

/// Whether the field travels at all, and under its own name.
bool travelsByName(const Field& field) {
    return field.kind != FieldKind::Local && field.kind != FieldKind::Rest &&
           jsonKey(field.name).data() == field.name.data();
}

const Field* fieldForKey(const RecordType& type, std::string_view key) {
    const Field* field = type.find(key);
    if (field) return travelsByName(*field) ? field : nullptr;
    for (const std::string_view renamed : {"_description", "varNewPassword"})
        if (jsonKey(renamed) == key) return type.find(renamed);
    return nullptr;
}

constexpr auto kTableOrder = [] {
    std::array<std::uint8_t, 256> numbers{};
    for (std::size_t number = 0; number < numbers.size(); ++number)
        numbers[number] = static_cast<std::uint8_t>(number);
    return numbers;
}();

const Field* restField(const RecordType& type) {
    for (const Field& field : type.fields())
        if (field.kind == FieldKind::Rest) return &field;
    return nullptr;
}

std::string_view textOf(dom::element value) { return value.get_string().value_unsafe(); }

} // namespace

std::optional<double> decimalNumber(std::string_view text) {
    if (text == "true") return 1;
    if (text == "false") return 0;
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number))
        return std::nullopt;
    return number;
}

FieldOrder::FieldOrder(const RecordType& type)
    : type_(type)
    , following_(kTableOrder) {}

const Field* FieldOrder::find(std::string_view key) {
    const auto fields = type_.fields();
    const std::size_t expected = following_[last_];
    if (expected < fields.size() && detail::sameName(fields[expected].name, key) &&
        travelsByName(fields[expected])) {
        last_ = expected + 1;
        return &fields[expected];
    }
    const Field* field = fieldForKey(type_, key);
    if (!field) return nullptr;
    const auto number = static_cast<std::size_t>(field - fields.data());
    following_[last_] = static_cast<std::uint8_t>(number);
    last_ = number + 1;
    return field;
}

Result<std::shared_ptr<void>> RecordReader::read(dom::element value, const RecordType& type) {
    std::shared_ptr<void> record = type.make();
    FieldOrder order(type);
    if (!readRecord(value, order, record.get())) return typeMismatch(received_, expected_, std::move(path_));
    return record;
}

bool RecordReader::readRecord(dom::element value, FieldOrder& order, void* record) {
    if (!value.is_object()) return mismatch(value, order.type().name());
    cursor_.passTokens(1);
    order.startRecord();
    bool empty = true;
    const dom::object object = value.get_object().value_unsafe();
    for (const dom::key_value_pair member : object) {
        empty = false;
        cursor_.passTokens(2);
        const Field* field = order.find(member.key);
        const bool read = field ? readMember(member.value, *field, record)
                                : keepRest(member.key, member.value, order.type(), record);
        if (!read) return failedIn(member.key);
        cursor_.passTokens(1);
    }
    if (empty) cursor_.passTokens(1);
    return true;
}

bool RecordReader::readMember(dom::element value, const Field& field, void* record) {
    if (value.is_null()) {
        cursor_.passTokens(1);
        return true;
    }
    switch (field.kind) {
    case FieldKind::Text: {
        auto& text = field.as<field::Text>(record);
        if (!value.is_string()) return readText(value, text.emplace());
        text.emplace(textOf(value));
        cursor_.passTokens(1);
        return true;
    }
    case FieldKind::Bool:
    case FieldKind::Integer:
    case FieldKind::Number:
        return readNumber(value, field, record);
    case FieldKind::TextList:
        return readTexts(value, field.as<field::TextList>(record));
    case FieldKind::Any:
        return readAny(value, field.as<field::Any>(record).emplace());
    case FieldKind::Record: {
        FieldOrder order(field.reference->type());
        return readRecord(value, order, field.reference->emplace(field.in(record)));
    }
    case FieldKind::List:
        return readList(value, field, record);
    case FieldKind::DateTime:
    case FieldKind::Bytes:
    case FieldKind::Local:
    case FieldKind::Rest:
        break;
    }
    return mismatch(value, "id");
}

bool RecordReader::readText(dom::element value, std::string& text) {
    switch (value.type()) {
    case element_type::STRING:
        text = textOf(value);
        break;
    case element_type::INT64:
    case element_type::UINT64:
    case element_type::DOUBLE:
    case element_type::BOOL:
        text = cursor_.spelling();
        break;
    default:
        return mismatch(value, "NSString");
    }
    cursor_.passTokens(1);
    return true;
}

bool RecordReader::readTexts(dom::element value, field::TextList& texts) {
    if (!value.is_array()) return mismatch(value, "NSArray");
    texts.emplace();
    cursor_.passTokens(1);
    const dom::array array = value.get_array().value_unsafe();
    std::size_t index = 0;
    for (const dom::element element : array) {
        if (element.is_null())
            cursor_.passTokens(1);
        else if (!readText(element, texts->emplace_back()))
            return failedIn(std::to_string(index));
        cursor_.passTokens(1);
        ++index;
    }
    if (index == 0) cursor_.passTokens(1);
    return true;
}

bool RecordReader::readNumber(dom::element value, const Field& field, void* record) {
    std::optional<double> number;
    double decimal = 0;
    bool truth = false;
    if (value.get(decimal) == simdjson::SUCCESS)
        number = decimal;
    else if (value.get(truth) == simdjson::SUCCESS)
        number = truth ? 1 : 0;
    else if (value.is_string())
        number = decimalNumber(textOf(value));
    if (!number) return mismatch(value, "NSNumber");
    if (field.kind == FieldKind::Number)
        field.as<field::Number>(record).emplace(*number);
    else if (field.kind == FieldKind::Integer)
        field.as<std::int64_t>(record) = Value(*number).integerValue();
    else
        field.as<bool>(record) = *number != 0;
    cursor_.passTokens(1);
    return true;
}

bool RecordReader::readList(dom::element value, const Field& field, void* record) {
    if (!value.is_array()) return mismatch(value, "NSArray");
    const dom::array array = value.get_array().value_unsafe();
    const ReferenceAccess& access = *field.reference;
    FieldOrder order(access.type());
    void* const member = field.in(record);
    access.reset(member, array.size());
    cursor_.passTokens(1);
    std::size_t index = 0;
    for (const dom::element element : array) {
        if (element.is_null())
            cursor_.passTokens(1);
        else if (!readRecord(element, order, access.emplace(member)))
            return failedIn(std::to_string(index));
        cursor_.passTokens(1);
        ++index;
    }
    if (index == 0) cursor_.passTokens(1);
    return true;
}

bool RecordReader::readAny(dom::element value, Value& result) {
    if (value.is_string()) {
        result = textOf(value);
        cursor_.passTokens(1);
        return true;
    }
    const std::string_view text = cursor_.passedText(value);
    auto parsed = parseJson(text);
    if (!parsed) {
        received_ = text;
        expected_ = "id";
        return false;
    }
    result = *std::move(parsed);
    return true;
}

/// What cannot be kept as it is, such as an object that names a key twice, is dropped.
bool RecordReader::keepRest(std::string_view key, dom::element value, const RecordType& type, void* record) {
    const Field* rest = restField(type);
    Value kept;
    if (!rest)
        cursor_.pass(value);
    else if (readAny(value, kept))
        rest->as<field::Rest>(record).members.emplace_back(key, std::move(kept));
    return true;
}

bool RecordReader::mismatch(dom::element value, std::string_view type) {
    received_ = cursor_.passedText(value);
    expected_ = type;
    return false;
}

bool RecordReader::failedIn(std::string_view step) {
    path_.insert(0, "/" + std::string(step));
    return false;
}

} // namespace norvane
