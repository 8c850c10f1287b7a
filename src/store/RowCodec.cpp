#include "src/store/RowCodec.h"

#include <norvane/platform/Json.h>
#include <norvane/platform/NVMException.h>

namespace norvane {

namespace {

std::int64_t millisecondsOf(Date date) { return date.time_since_epoch().count(); }

Date dateOf(std::int64_t milliseconds) { return Date(Date::duration(milliseconds)); }

std::string listText(const std::vector<std::string>& texts) {
    Array array;
    for (const auto& text : texts)
        array.emplace_back(text);
    return writeJson(array);
}

field::TextList listOf(const std::string& json) {
    const auto value = parseJson(json);
    const Array* array = value ? value->asArray() : nullptr;
    if (!array) return std::nullopt;
    std::vector<std::string> texts;
    for (const auto& element : *array)
        if (const auto* text = element.asString()) texts.push_back(*text);
    return texts;
}

void bindBytes(SQLite::Statement& statement, int parameter, const Data& bytes) {
    // A null pointer would bind an absent value instead of no bytes.
    statement.bindNoCopy(parameter, bytes.empty() ? "" : static_cast<const void*>(bytes.data()),
                         static_cast<int>(bytes.size()));
}

} // namespace

void bindAttribute(SQLite::Statement& statement, int parameter, const Field& field, const void* record) {
    switch (field.kind) {
    case FieldKind::Text:
        if (const auto& text = field.as<field::Text>(record)) statement.bindNoCopy(parameter, *text);
        break;
    case FieldKind::Number:
        if (const auto& number = field.as<field::Number>(record)) statement.bind(parameter, *number);
        break;
    case FieldKind::DateTime:
        if (const auto& date = field.as<field::Date>(record))
            statement.bind(parameter, millisecondsOf(*date));
        break;
    case FieldKind::Bytes:
        if (const auto& bytes = field.as<field::Bytes>(record)) bindBytes(statement, parameter, *bytes);
        break;
    case FieldKind::Bool:
        statement.bind(parameter, field.as<field::Bool>(record) ? 1 : 0);
        break;
    case FieldKind::Integer:
        statement.bind(parameter, field.as<field::Integer>(record));
        break;
    case FieldKind::TextList:
        if (const auto& list = field.as<field::TextList>(record)) statement.bind(parameter, listText(*list));
        break;
    default:
        throw NVMException("InvalidAttribute", "no attribute kind of the store: " + std::string(field.name));
    }
}

int bindAttributes(SQLite::Statement& statement, const Entity& entity, const void* record) {
    int parameter = 1;
    for (const Field* field : entity.attributes)
        bindAttribute(statement, parameter++, *field, record);
    return parameter;
}

void readAttributes(SQLite::Statement& statement, int firstColumn, const Entity& entity, void* record) {
    int index = firstColumn;
    for (const Field* field : entity.attributes) {
        const int column = index++;
        if (statement.isColumnNull(column)) continue;
        const auto cell = statement.getColumn(column);
        switch (field->kind) {
        case FieldKind::Text:
            field->as<field::Text>(record) = cell.getString();
            break;
        case FieldKind::Number:
            field->as<field::Number>(record) = cell.getDouble();
            break;
        case FieldKind::DateTime:
            field->as<field::Date>(record) = dateOf(cell.getInt64());
            break;
        case FieldKind::Bytes:
            field->as<field::Bytes>(record) = Data(cell.getBlob(), static_cast<std::size_t>(cell.getBytes()));
            break;
        case FieldKind::Bool:
            field->as<field::Bool>(record) = cell.getInt64() != 0;
            break;
        case FieldKind::Integer:
            field->as<field::Integer>(record) = cell.getInt64();
            break;
        case FieldKind::TextList:
            field->as<field::TextList>(record) = listOf(cell.getString());
            break;
        default:
            break;
        }
    }
}

field::TextList storedFormOf(const field::TextList& list) {
    return list ? listOf(listText(*list)) : std::nullopt;
}

Value readValue(SQLite::Statement& statement, int column, FieldKind kind) {
    if (statement.isColumnNull(column)) return {};
    const auto cell = statement.getColumn(column);
    switch (kind) {
    case FieldKind::Text:
        return cell.getString();
    case FieldKind::DateTime:
        return dateOf(cell.getInt64());
    case FieldKind::Bool:
        return cell.getInt64() != 0;
    case FieldKind::Integer:
        return cell.getInt64();
    case FieldKind::Bytes:
        return Data(cell.getBlob(), static_cast<std::size_t>(cell.getBytes()));
    case FieldKind::TextList: {
        const auto list = listOf(cell.getString());
        return list ? Value(Array(list->begin(), list->end())) : Value();
    }
    default:
        return cell.getDouble();
    }
}

void bindValue(SQLite::Statement& statement, int parameter, const Value& value) {
    if (const auto* text = value.asString()) return statement.bind(parameter, *text);
    if (const auto* date = value.asDate()) return statement.bind(parameter, millisecondsOf(*date));
    if (value.isBool() || value.isInteger()) return statement.bind(parameter, value.integerValue());
    if (const auto number = value.asDouble()) return statement.bind(parameter, *number);
    if (!value.isNull()) throw NVMException("InvalidCondition", "a value that no column holds");
}

} // namespace norvane
