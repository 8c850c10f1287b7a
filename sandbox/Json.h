#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace norvane::sandbox {

/// A JSON value. Objects keep the order of their members, so that what was read is written back alike.
class Json {
  public:
    using Array = std::vector<Json>;
    using Member = std::pair<std::string, Json>;
    using Object = std::vector<Member>;

    Json() = default; ///< null
    Json(bool value)
        : value_(value) {}
    Json(int value)
        : value_(std::int64_t{value}) {}
    Json(std::int64_t value)
        : value_(value) {}
    Json(double value)
        : value_(value) {}
    Json(const char* value)
        : value_(std::string(value)) {}
    Json(std::string_view value)
        : value_(std::string(value)) {}
    Json(std::string value)
        : value_(std::move(value)) {}
    Json(Array value)
        : value_(std::move(value)) {}
    Json(Object value)
        : value_(std::move(value)) {}

    static Json object(std::initializer_list<Member> members) { return Json(Object(members)); }

    bool isNull() const { return std::holds_alternative<std::monostate>(value_); }
    bool isText() const { return std::holds_alternative<std::string>(value_); }
    bool isArray() const { return std::holds_alternative<Array>(value_); }
    bool isObject() const { return std::holds_alternative<Object>(value_); }
    bool isBool() const { return std::holds_alternative<bool>(value_); }
    bool isNumber() const {
        return std::holds_alternative<std::int64_t>(value_) || std::holds_alternative<double>(value_);
    }

    /// The text itself; empty when this is not text.
    const std::string& asText() const;
    bool asBool() const { return isBool() && std::get<bool>(value_); }
    /// The whole number; `fallback` for anything else.
    std::int64_t asInteger(std::int64_t fallback = 0) const;
    double asNumber() const; ///< 0 when this is no number
    /// Elements of an array, members of an object; empty for any other value.
    const Array& items() const&;
    const Object& members() const&;
    Array* mutableItems() { return std::get_if<Array>(&value_); }

    /// The member of that key; null when there is none or this is not an object.
    const Json* find(std::string_view key) const;
    Json* find(std::string_view key);
    /// The text member of that key; empty when there is none.
    const std::string& text(std::string_view key) const;
    /// The elements of the array member of that key; empty when there is none.
    const Array& array(std::string_view key) const&;
    // A loop over what a call returned would see it destroyed: those get a value.
    Array items() && { return std::as_const(*this).items(); }
    Object members() && { return std::as_const(*this).members(); }
    Array array(std::string_view key) && { return std::as_const(*this).array(key); }
    /// Puts a member in, replacing one of the same key; makes this an object when it is none.
    Json& set(std::string_view key, Json value);
    void erase(std::string_view key);
    /// Appends an element; makes this an array when it is none.
    void push(Json value);

    /// On one line; with `indent` on lines of their own, for people.
    std::string write(bool indent = false) const;

  private:
    std::variant<std::monostate, bool, std::int64_t, double, std::string, Array, Object> value_;
};

struct JsonResult {
    Json value;
    std::string error; ///< empty when the text was JSON
    bool ok() const { return error.empty(); }
};

/// Reads one JSON text. Refuses invalid UTF-8, depths over 64, repeated keys and anything after the value.
JsonResult parseJson(std::string_view text);

} // namespace norvane::sandbox
