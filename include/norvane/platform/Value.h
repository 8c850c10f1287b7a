#pragma once

#include <norvane/platform/Data.h>
#include <norvane/platform/Date.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <typeindex>
#include <typeinfo>
#include <variant>
#include <vector>

namespace norvane {

class Value;
using Array = std::vector<Value>;
/// Ordered by key (bytewise), so that every enumeration of a dictionary is stable.
using Dictionary = std::map<std::string, Value, std::less<>>;

/// A value of no fixed type: what user defaults, decoded JSON, error and notification user information and
/// archived settings hold. Numbers keep whether they were made from a Boolean, an integer or a decimal.
class Value {
  public:
    /// Any record handed along by reference (an envelope in a notification, an error inside an error).
    struct Object {
        std::shared_ptr<const void> pointer;
        std::type_index type = typeid(void);
        friend bool operator==(const Object& a, const Object& b) { return a.pointer == b.pointer; }
    };

    Value() = default; ///< null
    Value(std::nullptr_t) {}
    Value(bool value)
        : storage_(value) {}
    Value(int value)
        : storage_(std::int64_t{value}) {}
    Value(std::int64_t value)
        : storage_(value) {}
    Value(double value)
        : storage_(value) {}
    Value(const char* value)
        : storage_(std::string(value)) {}
    Value(std::string value)
        : storage_(std::move(value)) {}
    Value(std::string_view value)
        : storage_(std::string(value)) {}
    Value(Data value)
        : storage_(std::move(value)) {}
    Value(Date value)
        : storage_(value) {}
    Value(Array value)
        : storage_(std::make_shared<const Array>(std::move(value))) {}
    Value(Dictionary value)
        : storage_(std::make_shared<const Dictionary>(std::move(value))) {}
    template <class T>
    Value(std::optional<T> value) {
        if (value) *this = Value(std::move(*value));
    }
    template <class T>
    static Value object(std::shared_ptr<T> object) {
        Value value;
        if (object) value.storage_ = Object{std::move(object), typeid(std::remove_const_t<T>)};
        return value;
    }

    bool isNull() const { return std::holds_alternative<std::monostate>(storage_); }
    bool isBool() const { return std::holds_alternative<bool>(storage_); }
    bool isNumber() const {
        return isBool() || std::holds_alternative<std::int64_t>(storage_) ||
               std::holds_alternative<double>(storage_);
    }
    bool isInteger() const { return std::holds_alternative<std::int64_t>(storage_); }
    bool isString() const { return std::holds_alternative<std::string>(storage_); }
    bool isArray() const { return asArray() != nullptr; }
    bool isDictionary() const { return asDictionary() != nullptr; }

    /// The like-typed content, or nothing when the value is of another type. Nothing is converted, except
    /// that a number answers as any kind of number.
    std::optional<bool> asBool() const;
    std::optional<std::int64_t> asInteger() const;
    std::optional<double> asDouble() const;
    const std::string* asString() const { return std::get_if<std::string>(&storage_); }
    const Data* asData() const { return std::get_if<Data>(&storage_); }
    const Date* asDate() const { return std::get_if<Date>(&storage_); }
    const Array* asArray() const;
    const Dictionary* asDictionary() const;
    /// The object when it was put in as exactly a `T` (const or not), else null.
    template <class T>
    std::shared_ptr<const T> asObject() const {
        const auto* object = std::get_if<Object>(&storage_);
        if (!object || object->type != typeid(T)) return nullptr;
        return std::static_pointer_cast<const T>(object->pointer);
    }

    /// The member of a dictionary, or null when there is none or this is no dictionary.
    const Value& operator[](std::string_view key) const;

    /// The Boolean reading of a boxed value: a number is true when it is not 0; a string when, after white
    /// space, it starts with "t", "T", "y", "Y" or a digit 1 to 9; everything else is false.
    bool boolValue() const;
    /// The integer reading: a number truncated, the decimal digits that a string starts with, else 0.
    std::int64_t integerValue() const;
    /// A number as its shortest decimal text ("1", "0.5", "true" never: a Boolean gives "1" or "0"), a string
    /// as it is, anything else as nothing.
    std::optional<std::string> stringValue() const;

    /// By content; numbers compare by value, whatever they were made from.
    friend bool operator==(const Value& a, const Value& b);

  private:
    std::variant<std::monostate, bool, std::int64_t, double, std::string, Data, Date,
                 std::shared_ptr<const Array>, std::shared_ptr<const Dictionary>, Object>
        storage_;
};

} // namespace norvane
