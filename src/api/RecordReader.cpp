#include "src/api/RecordReader.h"

#include "src/api/DeserializationErrors.h"

#include <norvane/api/NVESObject.h>
#include <norvane/platform/Json.h>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace norvane {
namespace {

namespace dom = simdjson::dom;
using dom::element_type;

/// Records of a list are made side by side: quicker to make and to read than one by one all over the heap.
/// Few enough that a record which outlives its list does not keep much memory.
constexpr std::size_t kRecordsOfBlock = 32;

/// The parser counts no further.
constexpr std::size_t kUncounted = 0xFFFFFF;

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

Result<std::shared_ptr<void>> RecordReader::read(dom::element value, const RecordType& type) {
    std::shared_ptr<void> record = type.make();
    if (!readRecord(value, KeyIndex::of(type), record.get()))
        return typeMismatch(received_, expected_, std::move(path_));
    return record;
}

bool RecordReader::readRecord(dom::element value, const KeyIndex& index, void* record) {
    if (!value.is_object()) return mismatch(value, index.type().name());
    cursor_.passTokens(1);
    bool empty = true;
    KeyIndex::Guess guess;
    const dom::object object = value.get_object().value_unsafe();
    const auto end = object.end();
    for (auto member = object.begin(); member != end; ++member) {
        empty = false;
        const std::string_view key = member.key();
        const dom::element inside = member.value();
        const KeyIndex::Member* const known = index.find(key, guess);
        if (known && known->isText && inside.is_string()) { // as most members are
            setText(*static_cast<field::Text*>(known->in(record)), textOf(inside));
            cursor_.passTokens(4);
            continue;
        }
        cursor_.passTokens(2);
        if (!known)
            keepRest(key, inside, index.rest(), record);
        else if (!readMember(inside, *known->field, known->in(record)))
            return failedIn(key);
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
    case FieldKind::Text:
        return readText(value, static_cast<field::Text*>(member)->emplace());
    case FieldKind::Bool:
    case FieldKind::Integer:
    case FieldKind::Number:
        return readNumber(value, field.kind, member);
    case FieldKind::TextList:
        return readTexts(value, *static_cast<field::TextList*>(member));
    case FieldKind::Any: // in wire records, an array without a kind of its own
        if (!value.is_array()) return mismatch(value, "NSArray");
        return readAny(value, *static_cast<field::Any*>(member));
    case FieldKind::Record:
        return readRecord(value, KeyIndex::of(field.reference->type()), field.reference->emplace(member));
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
    const KeyIndex& index = KeyIndex::of(access.type());
    const std::size_t size = array.size();
    if (size > room_ / access.recordSize || size >= kUncounted)
        return mismatch(value, "NSArray that fits in memory");
    room_ -= size * access.recordSize;
    access.reset(member, size);
    cursor_.passTokens(1);
    std::size_t number = 0;
    std::size_t used = 0;
    std::size_t made = 0;
    std::shared_ptr<void> block;
    for (const dom::element element : array) {
        if (element.is_null()) {
            cursor_.passTokens(1);
        } else {
            if (used == made) {
                made = std::min(size - number, kRecordsOfBlock);
                block = access.makeBlock(made);
                used = 0;
            }
            if (!readRecord(element, index, access.emplaceOf(member, block, used++)))
                return failedIn(std::to_string(number));
        }
        cursor_.passTokens(1);
        ++number;
    }
    if (number == 0) cursor_.passTokens(1);
    return true;
}

bool RecordReader::readAny(dom::element value, field::Any& result) {
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

void RecordReader::keepRest(std::string_view key, dom::element value, const Field* rest, void* record) {
    if (rest)
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
