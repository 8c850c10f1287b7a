#pragma once

#include <norvane/record/Record.h>

#include <span>
#include <string_view>

namespace norvane {

/// A field that an envelope does not get back from the store just as it was put in.
struct NotKept {
    const RecordType& (*record)(); ///< the record, and every kind of it
    std::string_view field;
    std::string_view why;
};

/// All of them. Beyond these a list without elements comes back absent, and everything else as it was.
std::span<const NotKept> fieldsNotKept();

/// The row that speaks of the field; null for one that is kept.
const NotKept* findNotKept(const RecordType& type, std::string_view field);

} // namespace norvane
