#include "src/api/DeserializationErrors.h"
#include "src/api/JsonCursor.h"
#include "src/api/RecordReader.h"
#include "src/api/ResponseType.h"

#include <norvane/api/NVESResponseDeserializer.h>
#include <norvane/platform/DateFormat.h>
#include <norvane/platform/Json.h>

#include <simdjson.h>

namespace norvane {
namespace {

namespace dom = simdjson::dom;
using Kind = ResponseType::Kind;

class ResultReader {
  public:
    ResultReader(JsonCursor& cursor, bool treatNullAsError)
        : cursor_(cursor)
        , treatNullAsError_(treatNullAsError) {}

    /// Passes the value.
    Result<NVESResult> read(dom::element value, std::string_view typeText) {
        if (value.is_null()) {
            cursor_.passTokens(1);
            return NVESResult();
        }
        const auto type = ResponseType::parse(typeText);
        if (!type) return unknownType(typeText, cursor_.passedText(value));
        switch (type->kind) {
        case Kind::Any:
            return readAny(value, *type);
        case Kind::Text:
        case Kind::Number:
        case Kind::Day:
            return readPrimitive(value, *type);
        case Kind::List:
            return readList(value, *type);
        case Kind::Members:
            return readDictionary(value, *type);
        case Kind::Record:
            break;
        }
        auto record = RecordReader(cursor_).read(value, *type->record);
        if (!record) return record.error();
        return NVESResult(*type->record, *std::move(record));
    }

  private:
    Result<NVESResult> readAny(dom::element value, const ResponseType& type) {
        if (value.is_string()) {
            cursor_.passTokens(1);
            return NVESResult(Value(value.get_string().value_unsafe()));
        }
        const std::string_view text = cursor_.passedText(value);
        auto parsed = parseJson(text);
        if (!parsed) return typeMismatch(text, type.name);
        return NVESResult(*std::move(parsed));
    }

    Result<NVESResult> readPrimitive(dom::element value, const ResponseType& type) {
        Value result;
        double number = 0;
        bool truth = false;
        if (value.is_string()) {
            const std::string_view text = value.get_string().value_unsafe();
            if (type.kind == Kind::Text)
                result = text;
            else if (type.kind == Kind::Day)
                result = parseIso8601(text);
            else
                result = decimalNumber(text);
        } else if (type.kind == Kind::Number) {
            if (value.get(number) == simdjson::SUCCESS)
                result = number;
            else if (value.get(truth) == simdjson::SUCCESS)
                result = truth;
        }
        if (result.isNull()) return typeMismatch(cursor_.passedText(value), type.name);
        cursor_.passTokens(1);
        return NVESResult(std::move(result));
    }

    Result<NVESResult> readList(dom::element value, const ResponseType& type) {
        if (!value.is_array()) return typeMismatch(cursor_.passedText(value), type.name);
        NVESResult::List elements;
        cursor_.passTokens(1);
        const dom::array array = value.get_array().value_unsafe();
        for (const dom::element element : array) {
            auto result = readInside(element, type.inner);
            if (!result) return result;
            elements.push_back(*std::move(result));
            cursor_.passTokens(1);
        }
        if (elements.empty()) cursor_.passTokens(1);
        return NVESResult(std::move(elements));
    }

    Result<NVESResult> readDictionary(dom::element value, const ResponseType& type) {
        if (!value.is_object()) return typeMismatch(cursor_.passedText(value), type.name);
        NVESResult::Members members;
        cursor_.passTokens(1);
        const dom::object object = value.get_object().value_unsafe();
        for (const dom::key_value_pair member : object) {
            cursor_.passTokens(2);
            auto result = readInside(member.value, type.inner);
            if (!result) return result;
            members.insert_or_assign(std::string(member.key), *std::move(result));
            cursor_.passTokens(1);
        }
        if (members.empty()) cursor_.passTokens(1);
        return NVESResult(std::move(members));
    }

    Result<NVESResult> readInside(dom::element value, std::string_view type) {
        if (treatNullAsError_ && value.is_null()) return nullInResponse();
        return read(value, type);
    }

    JsonCursor& cursor_;
    const bool treatNullAsError_;
};

Result<NVESResult> plainBody(std::string_view body, std::string_view typeText, bool asText) {
    const auto type = ResponseType::parse(typeText);
    if (!type) return unknownType(typeText, body);
    const bool isText = simdjson::validate_utf8(body.data(), body.size());
    if (isText && (type->kind == Kind::Text || (asText && type->kind == Kind::Any)))
        return NVESResult(Value(body));
    if (type->kind == Kind::Any) return NVESResult(Value(Data(std::string(body))));
    return typeMismatch(body, type->name);
}

} // namespace

Result<NVESResult> NVESResponseDeserializer::deserialize(std::string_view json, std::string_view type) const {
    if (type.empty()) return NVESResult();
    JsonCursor cursor(json);
    const auto root = cursor.root();
    if (!root) return plainBody(json, type, true);
    return ResultReader(cursor, treatNullAsError).read(*root, type);
}

Result<NVESResult> NVESResponseDeserializer::deserializeBytes(const Data& body, std::string_view type) const {
    if (type.empty()) return NVESResult();
    return plainBody(body.view(), type, false);
}

} // namespace norvane
