#include "sandbox/Json.h"

#include <simdjson.h>

#include <charconv>
#include <set>

namespace norvane::sandbox {

namespace {

const std::string kNoText;
const Json::Array kNoItems;
const Json::Object kNoMembers;
constexpr int kMaximumDepth = 64;

class Reader {
  public:
    Json read(simdjson::dom::element element, int depth) {
        if (depth > kMaximumDepth) return fail("nested too deeply");
        using Type = simdjson::dom::element_type;
        switch (element.type()) {
        case Type::NULL_VALUE:
            return {};
        case Type::BOOL:
            return Json(bool(element));
        case Type::INT64:
            return Json(std::int64_t(element));
        case Type::UINT64:
        case Type::DOUBLE:
            return Json(double(element));
        case Type::STRING:
            return Json(std::string_view(element));
        case Type::ARRAY:
            return readArray(element, depth);
        case Type::OBJECT:
            return readObject(element, depth);
        }
        return fail("of an unknown kind");
    }
    const std::string& error() const { return error_; }

  private:
    Json readArray(simdjson::dom::array array, int depth) {
        Json::Array items;
        for (const simdjson::dom::element item : array)
            items.push_back(read(item, depth + 1));
        return items;
    }
    Json readObject(simdjson::dom::object object, int depth) {
        Json::Object members;
        std::set<std::string_view> seen;
        for (const auto [key, value] : object) {
            if (!seen.insert(key).second) return fail("with the key '" + std::string(key) + "' twice");
            members.emplace_back(std::string(key), read(value, depth + 1));
        }
        return members;
    }
    Json fail(const std::string& why) {
        if (error_.empty()) error_ = "JSON " + why;
        return {};
    }
    std::string error_;
};

void writeText(std::string& out, const std::string& text) {
    static constexpr char kDigits[] = "0123456789abcdef";
    out += '"';
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '"' || character == '\\') {
            out += '\\';
            out += character;
        } else if (character == '\n') {
            out += "\\n";
        } else if (byte < 0x20) {
            out += "\\u00";
            out += kDigits[byte >> 4];
            out += kDigits[byte & 15];
        } else {
            out += character;
        }
    }
    out += '"';
}

std::string numberText(const Json& value) {
    char buffer[32];
    const auto whole = value.asInteger();
    const auto end = static_cast<double>(whole) == value.asNumber()
                         ? std::to_chars(buffer, buffer + sizeof buffer, whole)
                         : std::to_chars(buffer, buffer + sizeof buffer, value.asNumber());
    return {buffer, end.ptr};
}

class Writer {
  public:
    explicit Writer(bool indent)
        : indent_(indent) {}

    void write(const Json& value, std::size_t depth) {
        if (value.isNull()) text += "null";
        if (value.isBool()) text += value.asBool() ? "true" : "false";
        if (value.isNumber()) text += numberText(value);
        if (value.isText()) writeText(text, value.asText());
        if (value.isArray())
            writeRow("[]", value.items(), depth, [&](const Json& item) { write(item, depth + 1); });
        if (value.isObject())
            writeRow("{}", value.members(), depth, [&](const Json::Member& member) {
                writeText(text, member.first);
                text += indent_ ? ": " : ":";
                write(member.second, depth + 1);
            });
    }

    std::string text;

  private:
    template <class Row, class Each>
    void writeRow(const char* brackets, const Row& row, std::size_t depth, Each each) {
        text += brackets[0];
        for (const auto& entry : row) {
            if (&entry != &row.front()) text += ',';
            breakLine(depth + 1);
            each(entry);
        }
        if (!row.empty()) breakLine(depth);
        text += brackets[1];
    }
    void breakLine(std::size_t depth) {
        if (indent_) text.append("\n").append(2 * depth, ' ');
    }
    bool indent_;
};

} // namespace

const std::string& Json::asText() const { return isText() ? std::get<std::string>(value_) : kNoText; }

std::int64_t Json::asInteger(std::int64_t fallback) const {
    const auto* whole = std::get_if<std::int64_t>(&value_);
    return whole ? *whole : fallback;
}

double Json::asNumber() const {
    if (const auto* number = std::get_if<double>(&value_)) return *number;
    return static_cast<double>(asInteger());
}

const Json::Array& Json::items() const& { return isArray() ? std::get<Array>(value_) : kNoItems; }

const Json::Object& Json::members() const& { return isObject() ? std::get<Object>(value_) : kNoMembers; }

const Json* Json::find(std::string_view key) const {
    for (const auto& [name, value] : members())
        if (name == key) return &value;
    return nullptr;
}

Json* Json::find(std::string_view key) { return const_cast<Json*>(std::as_const(*this).find(key)); }

const std::string& Json::text(std::string_view key) const {
    const Json* member = find(key);
    return member ? member->asText() : kNoText;
}

const Json::Array& Json::array(std::string_view key) const& {
    const Json* member = find(key);
    return member ? member->items() : kNoItems;
}

Json& Json::set(std::string_view key, Json value) {
    if (!isObject()) value_ = Object();
    if (Json* member = find(key))
        *member = std::move(value);
    else
        std::get<Object>(value_).emplace_back(std::string(key), std::move(value));
    return *this;
}

void Json::erase(std::string_view key) {
    if (auto* object = std::get_if<Object>(&value_))
        std::erase_if(*object, [&](const Member& member) { return member.first == key; });
}

void Json::push(Json value) {
    if (!isArray()) value_ = Array();
    std::get<Array>(value_).push_back(std::move(value));
}

std::string Json::write(bool indent) const {
    Writer writer(indent);
    writer.write(*this, 0);
    return std::move(writer.text);
}

JsonResult parseJson(std::string_view text) {
    simdjson::dom::parser parser;
    simdjson::dom::element root;
    if (const auto error = parser.parse(text.data(), text.size(), true).get(root))
        return {{}, std::string("not JSON: ") + simdjson::error_message(error)};
    Reader reader;
    Json value = reader.read(root, 0);
    if (!reader.error().empty()) return {{}, reader.error()};
    return {std::move(value), {}};
}

} // namespace norvane::sandbox
