#pragma once

#include "src/api/JsonCursor.h"

#include <norvane/api/NVESObject.h>
#include <norvane/platform/NVMError.h>
#include <norvane/platform/Result.h>
#include <norvane/record/Record.h>

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace norvane {

/// Which field came after which in the records of one list: a service writes all of them in one order, mostly
/// but not always that of the table.
class FieldOrder {
  public:
    explicit FieldOrder(const RecordType& type);
    const RecordType& type() const { return type_; }
    /// The field that travels under the key, or null.
    const Field* find(std::string_view key) {
        const std::size_t expected = following_[last_];
        if (expected < fields_.size() && detail::sameName(fields_[expected].name, key) &&
            (places_[expected] != 0 || travelsByName(fields_[expected]))) {
            last_ = expected + 1;
            return &fields_[expected];
        }
        return findElsewhere(key);
    }
    /// The field's member in a record; all records of a type have it at one place.
    void* memberOf(const Field& field, void* record) {
        std::uint16_t& place = places_[static_cast<std::size_t>(&field - fields_.data())];
        if (place != 0) return static_cast<char*>(record) + (place - 1);
        void* const member = field.in(record);
        const auto offset = static_cast<char*>(member) - static_cast<char*>(record);
        if (travelsByName(field) && offset < kFarthest) place = static_cast<std::uint16_t>(offset + 1);
        return member;
    }
    void startRecord() { last_ = 0; }

  private:
    /// Whether the field travels at all, and under its own name.
    static bool travelsByName(const Field& field) {
        return field.kind != FieldKind::Local && field.kind != FieldKind::Rest &&
               jsonKey(field.name).data() == field.name.data();
    }
    const Field* findElsewhere(std::string_view key);
    const Field* fieldForKey(std::string_view key) const;

    static constexpr std::ptrdiff_t kFarthest = 65'535;

    const RecordType& type_;
    const std::span<const Field> fields_;
    std::size_t last_ = 0;                    ///< one more than the last field's number; 0 before the first
    std::array<std::uint8_t, 256> following_; ///< by `last_`: the number of the field to expect
    /// By number, of those that were met and travel by name: one more than the offset of the member.
    std::array<std::uint16_t, 256> places_{};
};

/// Fills records from the values that a cursor reaches. After a failed read the reader is done with.
class RecordReader {
  public:
    explicit RecordReader(JsonCursor& cursor)
        : cursor_(cursor) {}

    /// A new record from the value that comes next, which is passed.
    Result<std::shared_ptr<void>> read(simdjson::dom::element value, const RecordType& type);

  private:
    bool readRecord(simdjson::dom::element value, FieldOrder& order, void* record);
    bool readMember(simdjson::dom::element value, const Field& field, void* member);
    bool readText(simdjson::dom::element value, std::string& text);
    bool readTexts(simdjson::dom::element value, field::TextList& texts);
    bool readNumber(simdjson::dom::element value, FieldKind kind, void* member);
    bool readList(simdjson::dom::element value, const ReferenceAccess& access, void* member);
    bool readAny(simdjson::dom::element value, Value& result);
    void keepRest(std::string_view key, simdjson::dom::element value, const RecordType& type, void* record);
    bool mismatch(simdjson::dom::element value, std::string_view type);
    bool failedIn(std::string_view step);

    JsonCursor& cursor_;
    // What the failed read found: where, what and what it should have been.
    std::string path_;
    std::string received_;
    std::string_view expected_;
};

/// The number that the whole text spells in decimal ("-1.50", "1e3"); "true" and "false" are 1 and 0.
std::optional<double> decimalNumber(std::string_view text);

} // namespace norvane
