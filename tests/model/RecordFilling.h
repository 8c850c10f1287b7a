#pragma once

#include <norvane/record/Record.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace norvane {

/// Gives every field of the record, and of what it owns, a value of its own; lists get two elements.
class RecordFiller {
  public:
    void fill(const RecordType& type, void* record) {
        for (const Field& field : type.fields())
            fillField(field, record);
    }

  private:
    void fillField(const Field& field, void* record) {
        const std::int64_t number = ++last_;
        const std::string text = std::string(field.name) + " " + std::to_string(number);
        switch (field.kind) {
        case FieldKind::Text:
            field.as<field::Text>(record) = text;
            break;
        case FieldKind::Bool:
            field.as<bool>(record) = true;
            break;
        case FieldKind::Integer:
            field.as<std::int64_t>(record) = number;
            break;
        case FieldKind::Number:
            field.as<field::Number>(record) = static_cast<double>(number) + 0.5;
            break;
        case FieldKind::DateTime:
            field.as<field::Date>(record) = Date(std::chrono::milliseconds(number));
            break;
        case FieldKind::Bytes:
            field.as<field::Bytes>(record) = Data(text);
            break;
        case FieldKind::TextList:
            field.as<field::TextList>(record) = {text, text + "b"};
            break;
        case FieldKind::Record:
        case FieldKind::List:
            fillElements(field, field.in(record));
            break;
        default:
            break;
        }
    }

    void fillElements(const Field& field, void* member) {
        const ReferenceAccess& access = *field.reference;
        const int count = field.kind == FieldKind::List ? 2 : 1;
        for (int i = 0; i < count; ++i)
            fill(access.type(), access.emplace(member));
    }

    std::int64_t last_ = 0;
};

using FieldFilter = std::function<bool(const RecordType&, const Field&)>;

/// The names of the fields in which two records of a type differ, with those of the records that own them
/// ("signers.tabs.textTabs.value"); a name once. Fields that the filter finds, if there is one, are passed
/// over.
inline void collectDifferences(const RecordType& type, const void* a, const void* b, const std::string& path,
                               const FieldFilter& passesOver, std::vector<std::string>& names) {
    const auto add = [&](const std::string& name) {
        if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
    };
    for (const Field& field : type.fields()) {
        if (passesOver && passesOver(type, field)) continue;
        const std::string name = path + std::string(field.name);
        if (!field.reference) {
            if (valueOf(field, a) != valueOf(field, b)) add(name);
            continue;
        }
        const ReferenceAccess& access = *field.reference;
        const std::size_t count = access.size(field.in(a));
        if (count != access.size(field.in(b))) {
            add(name);
            continue;
        }
        for (std::size_t i = 0; i < count; ++i)
            collectDifferences(access.type(), access.at(field.in(a), i), access.at(field.in(b), i),
                               name + ".", passesOver, names);
    }
}

template <class T>
std::vector<std::string> differences(const T& a, const T& b, const FieldFilter& passesOver = {}) {
    std::vector<std::string> names;
    collectDifferences(T::type(), &a, &b, "", passesOver, names);
    return names;
}

} // namespace norvane
