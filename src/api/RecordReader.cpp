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

/// Most texts are short, and a copy of a known size is cheaper than a call: the parser's own buffer has room
/// to read beyond the end of any text in it.
void setText(field::Text& text, std::string_view value) {
    constexpr std::size_t kShort = 15;
    static_assert(kShort < simdjson::SIMDJSON_PADDING);
    if (value.size() > kShort) {
        text.emplace(value);
    } else {
        text.emplace(value.data(), kShort);
        text->resize(value.size());
    }
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
    , fields_(type.fields())
    , following_(kTableOrder) {}

const Field* FieldOrder::findElsewhere(std::string_view key) {
    const Field* field = fieldForKey(key);
    if (!field) return nullptr;
    const auto number = static_cast<std::size_t>(field - fields_.data());
    following_[last_] = static_cast<std::uint8_t>(number);
    last_ = number + 1;
    return field;
}

const Field* FieldOrder::fieldForKey(std::string_view key) const {
    const Field* field = type_.find(key);
    if (field) return travelsByName(*field) ? field : nullptr;
    for (const std::string_view renamed : {"_description", "varNewPassword"})
        if (jsonKey(renamed) == key) return type_.find(renamed);
    return nullptr;
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
        if (!field)
            keepRest(member.key, member.value, order.type(), record);
        else if (!readMember(member.value, *field, order.memberOf(*field, record)))
            return failedIn(member.key);
        cursor_.passTokens(1);
    }
    if (empty) cursor_.passTokens(1);
    return true;
}

bool RecordReader::readMember(dom::element value, const Field& field, void* member) {
    if (value.is_null()) {
        cursor_.passTokens(1);
        return true;
    }
    switch (field.kind) {
    case FieldKind::Text: {
        auto& text = *static_cast<field::Text*>(member);
        if (!value.is_string()) return readText(value, text.emplace());
        setText(text, textOf(value));
        cursor_.passTokens(1);
        return true;
    }
    case FieldKind::Bool:
    case FieldKind::Integer:
    case FieldKind::Number:
        return readNumber(value, field.kind, member);
    case FieldKind::TextList:
        return readTexts(value, *static_cast<field::TextList*>(member));
    case FieldKind::Any:
        return readAny(value, static_cast<field::Any*>(member)->emplace());
    case FieldKind::Record: {
        FieldOrder order(field.reference->type());
        return readRecord(value, order, field.reference->emplace(member));
    }
    case FieldKind::List:
        return readList(value, *field.reference, member);
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

bool RecordReader::readNumber(dom::element value, FieldKind kind, void* member) {
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
    if (kind == FieldKind::Number)
        static_cast<field::Number*>(member)->emplace(*number);
    else if (kind == FieldKind::Integer)
        *static_cast<field::Integer*>(member) = Value(*number).integerValue();
    else
        *static_cast<field::Bool*>(member) = *number != 0;
    cursor_.passTokens(1);
    return true;
}

bool RecordReader::readList(dom::element value, const ReferenceAccess& access, void* member) {
    if (!value.is_array()) return mismatch(value, "NSArray");
    const dom::array array = value.get_array().value_unsafe();
    FieldOrder order(access.type());
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

void RecordReader::keepRest(std::string_view key, dom::element value, const RecordType& type, void* record) {
    if (const Field* rest = restField(type))
        rest->as<field::Rest>(record).members.emplace_back(key, cursor_.passedSpelling(value));
    else
        cursor_.pass(value);
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
