#pragma once

#include <norvane/record/Record.h>

#include <optional>
#include <string_view>

namespace norvane {

/// What the text of a response type asks for. Views point into that text.
struct ResponseType {
    enum class Kind { Any, Text, Number, Day, List, Members, Record };
    Kind kind = Kind::Any;
    std::string_view name;  ///< without a last "*"
    std::string_view inner; ///< the type of a list's elements or a dictionary's values
    const RecordType* record = nullptr;

    /// Nothing for a name that stands for no known type.
    static std::optional<ResponseType> parse(std::string_view text);
};

} // namespace norvane
