#pragma once

#include <norvane/platform/Url.h>
#include <norvane/platform/Value.h>
#include <norvane/record/Record.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace norvane {

/// What an answer was decoded to: nothing, a plain value, a wire record, a list or dictionary of results, or
/// a downloaded file. Exactly one of these; a value, cheap to copy but for lists and dictionaries.
class NVESResult {
  public:
    using List = std::vector<NVESResult>;
    using Members = std::map<std::string, NVESResult, std::less<>>;

    NVESResult() = default; ///< nothing
    explicit NVESResult(Value value)
        : value_(std::move(value)) {}
    explicit NVESResult(Url file)
        : file_(std::move(file)) {}
    explicit NVESResult(List elements)
        : elements_(std::move(elements)) {}
    explicit NVESResult(Members members)
        : members_(std::move(members)) {}
    NVESResult(const RecordType& type, std::shared_ptr<void> record)
        : type_(&type)
        , record_(std::move(record)) {}

    bool isNothing() const { return value_.isNull() && !type_ && !elements_ && !members_ && !file_; }
    /// The plain value; null when there is none.
    const Value& value() const { return value_; }
    /// The record when it is exactly a `T`, else null.
    template <class T>
    std::shared_ptr<T> record() const {
        return type_ == &T::type() ? std::static_pointer_cast<T>(record_) : nullptr;
    }
    const RecordType* recordType() const { return type_; } ///< null when this is no record
    const std::shared_ptr<void>& anyRecord() const { return record_; }
    const std::optional<List>& elements() const { return elements_; }
    const std::optional<Members>& members() const { return members_; }
    /// Where a download lies; the receiver owns the file and removes it.
    const std::optional<Url>& file() const { return file_; }

  private:
    Value value_;
    const RecordType* type_ = nullptr;
    std::shared_ptr<void> record_;
    std::optional<List> elements_;
    std::optional<Members> members_;
    std::optional<Url> file_;
};

} // namespace norvane
