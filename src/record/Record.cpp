#include <norvane/record/Record.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace norvane {

const Field* RecordType::findByHash(std::string_view name) const {
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t slot = detail::nameHash(name) & mask; slots_[slot] != detail::kEmptySlot;
         slot = (slot + 1) & mask) {
        const Field& field = fields_[slots_[slot]];
        if (detail::sameName(field.name, name)) return &field;
    }
    return nullptr;
}

namespace {

bool isNumeric(FieldKind kind) {
    return kind == FieldKind::Bool || kind == FieldKind::Integer || kind == FieldKind::Number;
}

std::optional<double> numberIn(const Field& field, const void* record) {
    switch (field.kind) {
    case FieldKind::Bool:
        return field.as<bool>(record) ? 1.0 : 0.0;
    case FieldKind::Integer:
        return static_cast<double>(field.as<std::int64_t>(record));
    default:
        return field.as<field::Number>(record);
    }
}

/// The whole number nearest to zero; numbers beyond the range stay at its end.
std::int64_t integerOf(double value) {
    constexpr double kEnd = 9223372036854774784.0; // the largest double below 2^63
    return std::isnan(value) ? 0 : static_cast<std::int64_t>(std::clamp(value, -kEnd, kEnd));
}

void setNumber(const Field& field, void* record, std::optional<double> value) {
    switch (field.kind) {
    case FieldKind::Bool:
        field.as<bool>(record) = value.value_or(0) != 0;
        break;
    case FieldKind::Integer:
        field.as<std::int64_t>(record) = integerOf(value.value_or(0));
        break;
    default:
        field.as<field::Number>(record) = value;
        break;
    }
}

/// Calls `visit` with a null pointer of the member type of a kind that holds a plain value.
template <class Visit>
void withPlainType(FieldKind kind, Visit visit) {
    switch (kind) {
    case FieldKind::Text:
        visit(static_cast<field::Text*>(nullptr));
        break;
    case FieldKind::Bool:
        visit(static_cast<field::Bool*>(nullptr));
        break;
    case FieldKind::Integer:
        visit(static_cast<field::Integer*>(nullptr));
        break;
    case FieldKind::Number:
        visit(static_cast<field::Number*>(nullptr));
        break;
    case FieldKind::DateTime:
        visit(static_cast<field::Date*>(nullptr));
        break;
    case FieldKind::Bytes:
        visit(static_cast<field::Bytes*>(nullptr));
        break;
    case FieldKind::TextList:
        visit(static_cast<field::TextList*>(nullptr));
        break;
    case FieldKind::Any:
        visit(static_cast<field::Any*>(nullptr));
        break;
    case FieldKind::Local:
        visit(static_cast<field::LocalText*>(nullptr));
        break;
    case FieldKind::Rest:
        visit(static_cast<field::Rest*>(nullptr));
        break;
    case FieldKind::Record:
    case FieldKind::List:
        break;
    }
}

bool copyReferences(const Field& from, const void* source, const Field& to, void* target) {
    if (&from.reference->type() != &to.reference->type()) return false;
    const void* member = from.in(source);
    void* result = to.in(target);
    to.reference->clear(result);
    if (!from.reference->present(member)) return true;
    const std::size_t count = from.reference->size(member);
    if (to.kind == FieldKind::List) to.reference->reset(result, count);
    for (std::size_t index = 0; index < count; ++index)
        to.reference->adopt(result, from.reference->share(member, index));
    return true;
}

bool equalReferences(const Field& field, const void* a, const void* b) {
    const ReferenceAccess& access = *field.reference;
    const void* first = field.in(a);
    const void* second = field.in(b);
    if (access.present(first) != access.present(second) || access.size(first) != access.size(second))
        return false;
    for (std::size_t index = 0; index < access.size(first); ++index)
        if (!equalRecords(access.type(), access.at(first, index), access.at(second, index))) return false;
    return true;
}

} // namespace

void copyLikeNamedFields(const RecordType& fromType, const void* from, const RecordType& toType, void* to,
                         std::span<const std::string_view> except) {
    std::size_t hint = 0;
    for (const Field& target : toType.fields()) {
        if (std::find(except.begin(), except.end(), target.name) != except.end()) continue;
        const Field* source = fromType.find(target.name, hint);
        if (!source) continue;
        hint = static_cast<std::size_t>(source - fromType.fields().data()) + 1;
        copyField(*source, from, target, to);
    }
}

bool copyField(const Field& fromField, const void* from, const Field& toField, void* to) {
    if (isNumeric(fromField.kind) && isNumeric(toField.kind)) {
        setNumber(toField, to, numberIn(fromField, from));
        return true;
    }
    if (fromField.kind != toField.kind) return false;
    if (fromField.reference) return copyReferences(fromField, from, toField, to);
    withPlainType(toField.kind, [&](auto* type) {
        using Member = std::remove_pointer_t<decltype(type)>;
        toField.as<Member>(to) = fromField.as<Member>(from);
    });
    return true;
}

bool equalRecords(const RecordType& type, const void* a, const void* b) {
    if (a == b) return true;
    if (!a || !b) return false;
    for (const Field& field : type.fields()) {
        bool equal = true;
        if (field.reference) {
            equal = equalReferences(field, a, b);
        } else {
            withPlainType(field.kind, [&](auto* member) {
                using Member = std::remove_pointer_t<decltype(member)>;
                equal = field.as<Member>(a) == field.as<Member>(b);
            });
        }
        if (!equal) return false;
    }
    return true;
}

bool hasValue(const Field& field, const void* record) {
    switch (field.kind) {
    case FieldKind::Bool:
    case FieldKind::Integer:
        return true;
    case FieldKind::Record:
    case FieldKind::List:
        return field.reference->present(field.in(record));
    case FieldKind::Local:
        return field.as<field::LocalText>(record).text.has_value();
    case FieldKind::Rest:
        return !field.as<field::Rest>(record).members.empty();
    default:
        return !valueOf(field, record).isNull();
    }
}

Value valueOf(const Field& field, const void* record) {
    switch (field.kind) {
    case FieldKind::Text:
        return field.as<field::Text>(record);
    case FieldKind::Bool:
        return field.as<bool>(record);
    case FieldKind::Integer:
        return field.as<std::int64_t>(record);
    case FieldKind::Number:
        return field.as<field::Number>(record);
    case FieldKind::DateTime:
        return field.as<field::Date>(record);
    case FieldKind::Bytes:
        return field.as<field::Bytes>(record);
    case FieldKind::Any:
        return field.as<field::Any>(record);
    case FieldKind::Local:
        return field.as<field::LocalText>(record).text;
    case FieldKind::TextList: {
        const auto& list = field.as<field::TextList>(record);
        if (!list) return {};
        return Array(list->begin(), list->end());
    }
    case FieldKind::Rest:
    case FieldKind::Record:
    case FieldKind::List:
        break;
    }
    return {};
}

} // namespace norvane
