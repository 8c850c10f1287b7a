#pragma once

#include <optional>
#include <string_view>

#include <norvane/record/Record.h>

namespace norvane {

/// What the text of a response type asks for. Views point into that text.
struct ResponseType {
    enum class Kind { Basic, Text, Number, Date, List, Dictionary, Record };
    Kind kind = Kind::Basic;
    std::string_view name;  ///< without a last "*"
    std::string_view inner; ///< the type of a list's elements or a dictionary's values
    const RecordType* record = nullptr;

    /// Nothing for a name that stands for no known type.
    static std::optional<ResponseType> parse(std::string_view text);
};

} // namespace norvane
