#pragma once

#include <norvane/platform/Result.h>
#include <norvane/record/Record.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

// Wire records as JSON, driven by their tables. Any thread may call.
//
// Reading: a key that the table does not name never fails a read; it is dropped, or kept in order and as
// it is spelt where the record has a `Rest` field (a number beyond all doubles as text). Null and absent are
// the same. A number or Boolean where text is due keeps its spelling ("1.50"); text where a number is due is
// read as a decimal number. A key named twice counts as its last value that is not null. Anything else that
// does not fit, text that is no JSON, more than 64 MiB and more than 64 levels are the deserialisation error
// 143553; its `kJsonPathKey` says where, when the text as such is JSON, and its description quotes what came
// there without secrets. A byte order mark before the text is passed over.
//
// Writing: absent fields are left out, and so are a number that JSON cannot say and all `LocalText` fields.
// Ill-formed UTF-8 becomes U+FFFD. Date and Bytes fields do not travel.
namespace norvane {

/// A new record of that type from a JSON object. Never null when it succeeds.
Result<std::shared_ptr<void>> readRecord(const RecordType& type, std::string_view json);

template <class T>
Result<std::shared_ptr<T>> readRecord(std::string_view json) {
    auto record = readRecord(T::type(), json);
    if (!record) return record.error();
    return std::static_pointer_cast<T>(*std::move(record));
}

/// The record as a JSON object without blanks, keys in the order of its table.
std::string writeRecord(const RecordType& type, const void* record);

template <class T>
std::string writeRecord(const T& record) {
    return writeRecord(T::type(), &record);
}

/// The table of the wire record of that name ("NVESEnvelope"), or null.
const RecordType* wireRecordType(std::string_view name);

/// The tables of all wire records, by name.
std::vector<const RecordType*> wireRecordTypes();

} // namespace norvane
