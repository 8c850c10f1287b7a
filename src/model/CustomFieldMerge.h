#pragma once

#include <norvane/record/Kinds.h>

#include <map>
#include <memory>

namespace norvane {

/// Merges the given custom fields into those of the same name and adds the others. Names are unique
/// afterwards (of several the last stays) and the order is theirs. Serves the records of the domain and of
/// the wire.
template <class T>
void mergeCustomFields(const field::List<T>& given, field::List<T>& fields) {
    std::map<field::Text, std::shared_ptr<T>> byName;
    if (fields)
        for (const auto& field : *fields)
            byName[field->name] = field;
    if (given) {
        for (const auto& source : *given) {
            auto& field = byName[source->name];
            if (!field) {
                field = source;
                continue;
            }
            field->value = source->value;
            field->show = source->show;
            field->required = source->required;
            if (source->configurationType) field->configurationType = source->configurationType;
            if constexpr (requires { field->listItems; }) field->listItems = source->listItems;
        }
    }
    fields.emplace();
    for (auto& [name, field] : byName)
        fields->push_back(std::move(field));
}

} // namespace norvane
