#pragma once

#include <norvane/platform/Data.h>
#include <norvane/platform/Date.h>
#include <norvane/platform/Value.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// The member types of records, by the names that field lists use. Nothing else may be a field of a record.
namespace norvane::field {

using Text = std::optional<std::string>; ///< UTF-8; may be absent
using Bool = bool;
using Integer = std::int64_t;
using Number = std::optional<double>; ///< boxed number; may be absent
using Date = std::optional<norvane::Date>;
using Bytes = std::optional<Data>;
using TextList = std::optional<std::vector<std::string>>;
using Any = std::optional<Value>; ///< passed through as it came
template <class T>
using Record = std::shared_ptr<T>; ///< shared sub-record; null when absent
template <class T>
using List = std::optional<std::vector<std::shared_ptr<T>>>; ///< elements are never null

/// The members that a record's table does not name, in the order in which they came; kept and written back.
struct Rest {
    std::vector<std::pair<std::string, std::string>> members; ///< name and JSON text
    friend bool operator==(const Rest&, const Rest&) = default;
};

/// Text of this device only: copied, never read from outside and never sent.
struct LocalText {
    Text text;
    friend bool operator==(const LocalText&, const LocalText&) = default;
};

} // namespace norvane::field
