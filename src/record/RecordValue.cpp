#include <norvane/platform/Base64.h>
#include <norvane/platform/DateFormat.h>
#include <norvane/platform/Json.h>
#include <norvane/record/RecordValue.h>

#include <algorithm>
#include <cmath>

namespace norvane {

namespace {

/// Fills records, and knows where in the document it is.
class Filling {
  public:
    Failure fill(const RecordType& type, void* record, const Dictionary& values, const std::string& path) {
        for (const auto& [key, value] : values) {
            const std::string place = path.empty() ? key : path + "." + key;
            const Field* field = type.find(key);
            if (!field) return error(place, "is not a field of " + std::string(type.name()));
            if (value.isNull()) continue;
            if (Failure failure = set(*field, record, value, place)) return failure;
        }
        return std::nullopt;
    }

  private:
    static Failure error(const std::string& place, const std::string& what) {
        return NVMError::make(std::string(kRecordErrorDomain), 0, "\"" + place + "\" " + what + ".",
                              "RECORD_FIELD_INVALID");
    }

    Failure set(const Field& field, void* record, const Value& value, const std::string& place) {
        switch (field.kind) {
        case FieldKind::Text:
            return setText(field, record, value, place);
        case FieldKind::Bool:
            if (!value.isBool()) return error(place, "must be true or false");
            field.as<bool>(record) = value.boolValue();
            return std::nullopt;
        case FieldKind::Integer:
            return setInteger(field, record, value, place);
        case FieldKind::Number:
            if (!value.asDouble() || value.isBool()) return error(place, "must be a number");
            field.as<field::Number>(record) = value.asDouble();
            return std::nullopt;
        case FieldKind::DateTime:
            return setDate(field, record, value, place);
        case FieldKind::Bytes:
            return setBytes(field, record, value, place);
        case FieldKind::TextList:
            return setTexts(field, record, value, place);
        case FieldKind::Any:
            field.as<field::Any>(record) = value;
            return std::nullopt;
        case FieldKind::Record:
            return setRecord(field, record, value, place);
        case FieldKind::List:
            return setList(field, record, value, place);
        case FieldKind::Local:
        case FieldKind::Rest:
            break;
        }
        return error(place, "cannot be given");
    }

    static Failure setText(const Field& field, void* record, const Value& value, const std::string& place) {
        if (!value.isString()) return error(place, "must be a text");
        field.as<field::Text>(record) = *value.asString();
        return std::nullopt;
    }

    /// "3.0" says a whole number too.
    static Failure setInteger(const Field& field, void* record, const Value& value,
                              const std::string& place) {
        constexpr double kExactIntegers = 9007199254740992.0;
        const auto number = value.isBool() ? std::nullopt : value.asDouble();
        const bool isWhole = value.isInteger() || (number && std::trunc(*number) == *number &&
                                                   std::abs(*number) <= kExactIntegers);
        if (!isWhole) return error(place, "must be a whole number");
        field.as<std::int64_t>(record) = value.integerValue();
        return std::nullopt;
    }

    static Failure setBytes(const Field& field, void* record, const Value& value, const std::string& place) {
        const std::string* text = value.asString();
        Data bytes = text ? decodeBase64(*text) : Data();
        if (!text || encodeBase64(bytes.view()) != *text) return error(place, "must be bytes in base64");
        field.as<field::Bytes>(record) = std::move(bytes);
        return std::nullopt;
    }

    static Failure setDate(const Field& field, void* record, const Value& value, const std::string& place) {
        const auto date = value.isString() ? parseIso8601(*value.asString()) : std::nullopt;
        if (!date) return error(place, "must be a date like 2026-01-31T12:00:00.000Z");
        field.as<field::Date>(record) = *date;
        return std::nullopt;
    }

    static Failure setTexts(const Field& field, void* record, const Value& value, const std::string& place) {
        if (!value.isArray()) return error(place, "must be a list of texts");
        auto& texts = field.as<field::TextList>(record).emplace();
        for (const Value& entry : *value.asArray()) {
            if (!entry.isString()) return error(place, "must be a list of texts");
            texts.push_back(*entry.asString());
        }
        return std::nullopt;
    }

    Failure setRecord(const Field& field, void* record, const Value& value, const std::string& place) {
        if (!value.isDictionary()) return error(place, "must be an object");
        const ReferenceAccess& access = *field.reference;
        return fill(access.type(), access.emplace(field.in(record)), *value.asDictionary(), place);
    }

    Failure setList(const Field& field, void* record, const Value& value, const std::string& place) {
        if (!value.isArray()) return error(place, "must be a list of objects");
        const ReferenceAccess& access = *field.reference;
        access.reset(field.in(record), value.asArray()->size());
        std::size_t index = 0;
        for (const Value& entry : *value.asArray()) {
            const std::string element = place + "[" + std::to_string(index++) + "]";
            if (!entry.isDictionary()) return error(element, "must be an object");
            if (Failure failure =
                    fill(access.type(), access.emplace(field.in(record)), *entry.asDictionary(), element))
                return failure;
        }
        return std::nullopt;
    }
};

using IsSet = bool (*)(const RecordType& type);

void sortByName(Array& records) {
    const auto keyOf = [](const Value& value) {
        return std::pair(value["name"].stringValue(), writeJson(value));
    };
    std::vector<std::pair<decltype(keyOf(Value())), Value>> keyed;
    for (Value& record : records)
        keyed.emplace_back(keyOf(record), std::move(record));
    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::transform(keyed.begin(), keyed.end(), records.begin(),
                   [](auto& pair) { return std::move(pair.second); });
}

Array valuesOfList(const Field& field, const void* record, IsSet isSetOf) {
    const ReferenceAccess& access = *field.reference;
    const void* member = field.in(record);
    Array values;
    for (std::size_t index = 0; index < access.size(member); ++index)
        values.push_back(valuesOfRecord(access.type(), access.at(member, index), isSetOf));
    if (isSetOf && isSetOf(access.type())) sortByName(values);
    return values;
}

Value valueOfField(const Field& field, const void* record, IsSet isSetOf) {
    switch (field.kind) {
    case FieldKind::Record:
        return valuesOfRecord(field.reference->type(), field.reference->at(field.in(record), 0), isSetOf);
    case FieldKind::List:
        return valuesOfList(field, record, isSetOf);
    default:
        return valueOf(field, record);
    }
}

} // namespace

Dictionary valuesOfRecord(const RecordType& type, const void* record, IsSet isSetOf) {
    Dictionary values;
    for (const Field& field : type.fields())
        if (hasValue(field, record)) values.emplace(field.name, valueOfField(field, record, isSetOf));
    return values;
}

Failure fillRecord(const RecordType& type, void* record, const Dictionary& values) {
    return Filling().fill(type, record, values, {});
}

} // namespace norvane
