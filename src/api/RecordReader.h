#pragma once

#include "src/api/JsonCursor.h"
#include "src/api/KeyIndex.h"

#include <norvane/platform/NVMError.h>
#include <norvane/platform/Result.h>
#include <norvane/record/Record.h>

#include <memory>
#include <string>
#include <string_view>

namespace norvane {

/// Fills records from the values that a cursor reaches. After a failed read the reader is done with.
class RecordReader {
  public:
    explicit RecordReader(JsonCursor& cursor)
        : cursor_(cursor) {}

    /// A new record from the value that comes next, which is passed.
    Result<std::shared_ptr<void>> read(simdjson::dom::element value, const RecordType& type);

  private:
    bool readRecord(simdjson::dom::element value, const KeyIndex& index, void* record);
    bool readMember(simdjson::dom::element value, const Field& field, void* member);
    bool readText(simdjson::dom::element value, std::string& text);
    bool readTexts(simdjson::dom::element value, field::TextList& texts);
    bool readNumber(simdjson::dom::element value, FieldKind kind, void* member);
    bool readList(simdjson::dom::element value, const ReferenceAccess& access, void* member);
    bool readAny(simdjson::dom::element value, field::Any& result);
    void keepRest(std::string_view key, simdjson::dom::element value, const Field* rest, void* record);
    bool mismatch(simdjson::dom::element value, std::string_view type);
    bool failedIn(std::string_view step);

    /// Bytes of all lists' records together. An empty record takes two bytes of JSON and up to two thousand
    /// here; real answers are far below.
    static constexpr std::size_t kMaxListBytes = std::size_t{1} << 30;

    JsonCursor& cursor_;
    std::size_t room_ = kMaxListBytes; ///< what is left of it
    // What the failed read found: where, what and what it should have been.
    std::string path_;
    std::string received_;
    std::string_view expected_;
};

/// The number that the whole text spells in decimal ("-1.50", "1e3"); "true" and "false" are 1 and 0.
std::optional<double> decimalNumber(std::string_view text);

} // namespace norvane
