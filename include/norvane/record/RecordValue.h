#pragma once

#include <norvane/platform/Result.h>
#include <norvane/record/Record.h>

namespace norvane {

inline constexpr std::string_view kRecordErrorDomain = "NorvaneRecordErrorDomain";

/// Fills a record from a dictionary by its table, as a tool or a test writes records down: numbers and
/// Booleans as such, dates as "YYYY-MM-DDThh:mm:ss.sssZ", bytes in base64 with padding, sub-records as
/// dictionaries, lists as arrays; null is absent. A member that the table does not name, or of the wrong
/// kind, is an error that names it, with its path
/// ("recipientDefaults[1].recipientName"); what came before it is filled in.
Failure fillRecord(const RecordType& type, void* record, const Dictionary& values);

/// The other way: a dictionary of the fields that hold anything; Booleans and whole numbers always. Dates and
/// bytes are values of their own types. Lists of records of a type that `isSetOf` names are sorted by "name",
/// then by content.
Dictionary valuesOfRecord(const RecordType& type, const void* record,
                          bool (*isSetOf)(const RecordType& type) = nullptr);

template <class T>
Result<T> recordFromValue(const Dictionary& values) {
    T record;
    if (Failure failure = fillRecord(T::type(), &record, values)) return *std::move(failure);
    return record;
}

} // namespace norvane
